// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>

#include "support/Units.h"

namespace music {

/// A stretch of a file that is played again and again: from begin up to, not with, end.
struct Loop {
  support::SourceFrame begin{0};
  support::SourceFrame end{0};

  [[nodiscard]] std::int64_t Frames() const { return end.value - begin.value; }
  [[nodiscard]] bool Holds(std::int64_t frame) const { return begin.value <= frame && frame < end.value; }
  [[nodiscard]] Loop MovedBy(std::int64_t frames) const {
    return {{begin.value + frames}, {end.value + frames}};
  }
  bool operator==(const Loop&) const = default;
};

/// Where a place that simply ran on would be, had it turned at the loop's end. Requires: Frames() > 0.
[[nodiscard]] inline double Folded(double place, const Loop& loop) {
  const auto end = static_cast<double>(loop.end.value);
  if (place < end) return place;
  return static_cast<double>(loop.begin.value) + std::fmod(place - end, static_cast<double>(loop.Frames()));
}

}  // namespace music
