// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "benchmarks/SongDice.h"

namespace bench {

/// A key and four chords of a bar each that return for the whole song.
class SongHarmony {
 public:
  explicit SongHarmony(SongDice& dice)
      : root_(dice.Below(12)),
        chords_(kProgressions[static_cast<std::size_t>(dice.Below(static_cast<int>(kProgressions.size())))]),
        scale_(dice.Chance(0.5) ? kMajor : kMinor) {}

  /// The degree of the scale on which the bar's chord stands, 0 to 6.
  [[nodiscard]] int Degree(int bar) const { return chords_[static_cast<std::size_t>(bar % 4)]; }
  /// Semitones above a C, for a degree from 0 up.
  [[nodiscard]] int Pitch(int degree) const {
    return root_ + 12 * (degree / 7) + scale_[static_cast<std::size_t>(degree % 7)];
  }

 private:
  using Scale = std::array<int, 7>;
  using Chords = std::array<int, 4>;
  static constexpr Scale kMinor{0, 2, 3, 5, 7, 8, 10}, kMajor{0, 2, 4, 5, 7, 9, 11};
  static constexpr std::array<Chords, 6> kProgressions{
      {{0, 5, 2, 6}, {0, 3, 4, 4}, {0, 5, 3, 4}, {0, 6, 5, 4}, {0, 0, 3, 4}, {5, 3, 0, 4}}};

  int root_;
  Chords chords_;
  Scale scale_;
};

}  // namespace bench
