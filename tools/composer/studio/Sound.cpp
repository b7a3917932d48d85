// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/composer/studio/Sound.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tools::composer {

// The trapezoidal state variable filter: stable at any cutoff below half the rate, also while it moves.
void Filter::Tune(double cutoff_hz, double resonance) {
  g_ = std::tan(std::numbers::pi * std::clamp(cutoff_hz, 20.0, 0.45 * kRate) / kRate);
  k_ = 1 / std::max(resonance, 0.3);
  a1_ = 1 / (1 + g_ * (g_ + k_));
  a2_ = g_ * a1_;
  a3_ = g_ * a2_;
}

void Filter::Feed(float in) {
  const double v3 = in - s2_;
  const double band = a1_ * s1_ + a2_ * v3;
  const double low = s2_ + a2_ * s1_ + a3_ * v3;
  s1_ = 2 * band - s1_;
  s2_ = 2 * low - s2_;
  low_ = static_cast<float>(low);
  band_ = static_cast<float>(band);
  high_ = static_cast<float>(in - k_ * band - low);
}

}  // namespace tools::composer
