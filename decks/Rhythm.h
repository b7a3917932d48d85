// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <complex>
#include <span>
#include <vector>

#include "music/BeatGrid.h"
#include "music/Wave.h"

namespace decks {

/// How suddenly each band of a track gets louder, and how much of that comes back at a frequency.
class Rhythm {
 public:
  enum Band { kLow, kMid, kHigh, kBands };
  /// A stretch of the track, in columns of the wave.
  struct Stretch {
    std::size_t from = 0;
    std::size_t to = 0;
  };

  explicit Rhythm(const music::Wave& wave);

  [[nodiscard]] Stretch Whole() const { return {0, rises_[kLow].size()}; }
  /// The middle of the track, at most so long.
  [[nodiscard]] Stretch Middle(music::Seconds longest) const;

  /// 1 is as much as single strokes would give; the angle is the phase at time 0.
  [[nodiscard]] std::complex<double> At(Band band, double frequency, const Stretch& stretch) const;
  [[nodiscard]] double Share(Band band, double frequency, const Stretch& stretch) const {
    return std::abs(At(band, frequency, stretch));
  }
  /// How much of a pulse comes together beyond chance: about 1 where there is none, and up to the number of
  /// its strokes.
  [[nodiscard]] double Evidence(Band band, double frequency, const Stretch& stretch) const;
  /// The same of a pulse that follows beats wherever they lie, in strokes a second.
  [[nodiscard]] double EvidenceAlong(Band band, std::span<const music::Seconds> beats) const;
  /// How much louder all bands get in a second, in units of how loud they are: 0 for silence, next to nothing
  /// for a tone that is held.
  [[nodiscard]] double Liveliness() const { return liveliness_; }
  /// Of a pulse with its halves and quarters, over all bands.
  [[nodiscard]] double PulseAt(double frequency, const Stretch& stretch) const;
  /// The rises of one period, all periods laid over each other, in kPlaces places from time 0 on.
  static constexpr int kPlaces = 384;
  [[nodiscard]] std::array<double, kPlaces> Folded(Band band, double frequency) const;

 private:
  double liveliness_ = 0;
  std::array<std::vector<float>, kBands> rises_;  // less their mean, in units of it
};

}  // namespace decks
