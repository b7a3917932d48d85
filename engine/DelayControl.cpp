// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/DelayControl.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

constexpr double kSmooth = 1;                    // seconds
constexpr double kProportional = 8e-6 * 48'000;  // of the pace, a second of delay too much
constexpr double kIntegral = 0.8e-6 * 48'000;    // the same, a second long
constexpr double kMostDrift = 1e-3;
constexpr double kMostBend = 3e-3;  // 5 cents

}  // namespace

void DelayControl::Jumped(double target) {
  smooth_ = target;
  bend_ = integral_;
}

void DelayControl::Next(double delay, double target, double after) {
  if (smooth_ < 0) smooth_ = delay;
  smooth_ += (delay - smooth_) * (1 - std::exp(-after / kSmooth));
  const double off = smooth_ - target;
  const double wanted = integral_ + kProportional * off;
  // While the pace stands at its limit, the integral would learn the wrong thing.
  if (std::abs(wanted) < kMostBend) {
    integral_ = std::clamp(integral_ + kIntegral * off * after, -kMostDrift, kMostDrift);
  }
  bend_ = std::clamp(integral_ + kProportional * off, -kMostBend, kMostBend);
}

void LongestWait::Saw(double seconds, support::TimePoint now) {
  if (now - turn_ > length_) {
    before_ = now_;
    now_ = 0;
    turn_ = now;
  }
  now_ = std::max(now_, seconds);
}

}  // namespace engine
