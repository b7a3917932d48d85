// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>

#include "music/BeatGrid.h"
#include "music/Loudness.h"
#include "music/Wave.h"
#include "support/Units.h"

namespace music {

struct TrackForm;

/// Where the sound of a file begins and ends.
struct MixPoints {
  support::BytePosition start;   ///< the length where the file is silent throughout
  support::BytePosition end;     ///< 0 where nothing was found
  support::BytePosition length;  ///< exact
  double start_seconds = 0;
  double end_seconds = 0;
  bool operator==(const MixPoints&) const = default;
};

/// Mix points with the threshold that they were found by.
struct FoundMixPoints {
  MixPoints points;
  int gain_percent = 0;
  bool operator==(const FoundMixPoints&) const = default;
};

/// All that is known of a track from its samples. A snapshot: it is replaced, not changed. Its large parts
/// are shared, because the window draws from them while the decks go on.
struct TrackAnalysis {
  /// Raised when the finders change so much that what was kept of older ones is not worth having.
  static constexpr int kVersion = 1;

  std::shared_ptr<const Wave> wave;       ///< null until made
  std::shared_ptr<const BeatGrid> grid;   ///< null until looked for; empty where there are no beats
  std::shared_ptr<const TrackForm> form;  ///< null until looked for
  Loudness loudness;
  std::optional<FoundMixPoints> mix_points;
  support::SourceFrame length;  ///< exact
  int sample_rate = 0;          ///< Hz
  int channels = 0;
};

}  // namespace music
