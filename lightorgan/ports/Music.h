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

/// The sound of the deck that is heard loudest, decks 1 to 3. Threads: the conductor.
class SpectrumSource {
 public:
  virtual ~SpectrumSource() = default;
  /// Of what is heard now; nothing while no deck plays.
  [[nodiscard]] virtual std::optional<Bins> Spectrum(Channels channels) = 0;
};

/// A beat of a deck's grid.
struct HeardBeat {
  int deck = 0;
  std::int64_t number = 0;  ///< of the last beat, counted from the grid's first
  bool operator==(const HeardBeat&) const = default;
};

/// The beats of the deck that is heard loudest. Threads: the conductor.
class BeatSource {
 public:
  virtual ~BeatSource() = default;
  /// At least one of the four decks plays.
  [[nodiscard]] virtual bool AnyPlaying() = 0;
  /// At what will be heard so far from now; nothing where the track has no grid.
  [[nodiscard]] virtual std::optional<HeardBeat> LastBeat(std::chrono::microseconds ahead) = 0;
};

}  // namespace lightorgan
