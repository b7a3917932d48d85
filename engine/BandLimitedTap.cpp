// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/BandLimitedTap.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace engine {
namespace {

constexpr double kBeta = 8;       // of the window: side lobes 80 dB down
constexpr double kPassed = 0.92;  // of the band

/// The modified Bessel function of the first kind, order 0, by its series.
double Bessel(double x) {
  double term = 1, sum = 1;
  for (int k = 1; k < 40; ++k) {
    term *= (x / 2 / k) * (x / 2 / k);
    sum += term;
  }
  return sum;
}

double Sinc(double x) {
  return x == 0 ? 1 : std::sin(std::numbers::pi * x) / (std::numbers::pi * x);
}

}  // namespace

BandLimitedTap::BandLimitedTap() : table_((kCrossings + 2) * kSteps) {
  for (int i = 0; i < kCrossings * kSteps; ++i) {
    const double x = static_cast<double>(i) / kSteps;
    const double across = x / kCrossings;
    table_[static_cast<std::size_t>(i)] =
        static_cast<float>(Sinc(x) * Bessel(kBeta * std::sqrt(1 - across * across)) / Bessel(kBeta));
  }
  SetPace(1);
}

void BandLimitedTap::SetPace(double pace) noexcept {
  edge_ = std::max(kPassed / std::max(pace, 1.0), static_cast<double>(kCrossings) / (kMostReach - 1));
  reach_ = static_cast<int>(std::ceil(kCrossings / edge_));
}

float BandLimitedTap::At(const float* source, std::ptrdiff_t stride, double between) const noexcept {
  const auto step = static_cast<float>(edge_ * kSteps);
  const float* const weights = table_.data();
  // Each wing goes outwards from the place.
  const auto wing = [&](const float* sample, std::ptrdiff_t onwards, double away) {
    float sum = 0;
    float place = static_cast<float>(away) * step;
    for (int i = 0; i < reach_; ++i, sample += onwards, place += step) {
      const auto below = static_cast<int>(place);
      const float part = place - static_cast<float>(below);
      sum += *sample * (weights[below] + part * (weights[below + 1] - weights[below]));
    }
    return sum;
  };
  const float* const middle = source + reach_ * stride;
  return (wing(middle - stride, -stride, between) + wing(middle, stride, 1 - between)) *
         static_cast<float>(edge_);
}

}  // namespace engine
