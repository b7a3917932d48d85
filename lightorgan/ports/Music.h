// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "music/Spectrum.h"

namespace lightorgan {

/// Magnitudes of a 256-sample transform.
using Bins = music::Spectrum;

enum class Channels { Mixed, Left, Right };

/// The sound of what is heard loudest: a deck, 1 to 3, or a song beside the decks. Threads: the conductor.
class SpectrumSource {
 public:
  virtual ~SpectrumSource() = default;
  /// Of what is heard now; nothing while none plays.
  [[nodiscard]] virtual std::optional<Bins> Spectrum(Channels channels) = 0;
};

/// A beat of what is heard.
struct HeardBeat {
  int source = 0;           ///< other beats have another number
  std::int64_t number = 0;  ///< of the last beat, counted from the grid's first
  bool operator==(const HeardBeat&) const = default;
};

/// The beats of what is heard loudest. Threads: the conductor.
class BeatSource {
 public:
  virtual ~BeatSource() = default;
  /// At least one of the four decks plays, or a song.
  [[nodiscard]] virtual bool AnyPlaying() = 0;
  /// At what will be heard so far from now; nothing where no beats are known.
  [[nodiscard]] virtual std::optional<HeardBeat> LastBeat(std::chrono::microseconds ahead) = 0;
};

}  // namespace lightorgan
