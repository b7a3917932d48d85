// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace bench {

/// Dice of our own, as the standard library's distributions differ between machines.
class SongDice {
 public:
  explicit SongDice(std::uint64_t seed) : state_(seed) {}
  std::uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = (state_ ^ (state_ >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31);
  }
  double Real(double from, double to) {
    return from + (to - from) * (static_cast<double>(Next() >> 11) * 0x1p-53);
  }
  int Below(int count) { return static_cast<int>(Next() % static_cast<std::uint64_t>(count)); }
  bool Chance(double share) { return Real(0, 1) < share; }
  /// Around zero: three dice come close to a bell of that deviation.
  double Near(double deviation) {
    const double first = Real(-1, 1), second = Real(-1, 1), third = Real(-1, 1);
    return deviation * (first + second + third);
  }

 private:
  std::uint64_t state_;
};

}  // namespace bench
