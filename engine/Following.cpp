// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Following.h"

#include <algorithm>
#include <cmath>

namespace engine {

double Following::Next(double behind, double after) {
  constexpr double kFar = 0.6e-3;    // s; beyond it the tempo was changed, within it only the clocks differ
  constexpr double kLearning = 0.1;  // of what is missing, a second
  constexpr double kMostLearnt = 1e-3;
  constexpr double kMost = 0.02;
  quick_ += (behind - quick_) * std::min(1.0, after / 0.33);
  still_ = std::clamp(still_ + (behind - still_) * std::min(1.0, after), -kFar, kFar);
  const double far = quick_ - std::clamp(quick_, -kFar, kFar);
  if (far == 0) learnt_ = std::clamp(learnt_ + still_ * kLearning * after, -kMostLearnt, kMostLearnt);
  bend_ = 1 + std::clamp(2 * far + 0.5 * still_ + learnt_, -kMost, kMost);
  return bend_;
}

void Following::Rest() {
  quick_ = still_ = 0;
  bend_ = 1 + learnt_;
}

}  // namespace engine
