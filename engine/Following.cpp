// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Following.h"

#include <algorithm>
#include <cmath>

namespace engine {

double Following::Next(double behind, double after) {
  constexpr double kSmooth = 0.33;   // s
  constexpr double kPace = 1.5;      // of what is missing, a second
  constexpr double kLearning = 0.1;  // of that, a second
  constexpr double kMostLearnt = 1e-3;
  constexpr double kMost = 0.02;
  smooth_ += (behind - smooth_) * std::min(1.0, after / kSmooth);
  // While it catches up after a change of tempo there is nothing to be learnt of the clocks.
  constexpr double kClocks = 1e-3;  // s
  if (std::abs(smooth_) < kClocks) {
    learnt_ = std::clamp(learnt_ + smooth_ * kLearning * after, -kMostLearnt, kMostLearnt);
  }
  bend_ = 1 + std::clamp(smooth_ * kPace + learnt_, -kMost, kMost);
  return bend_;
}

void Following::Rest() {
  smooth_ = 0;
  bend_ = 1 + learnt_;
}

}  // namespace engine
