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

BandLimitedTap::BandLimitedTap() : table_(kCrossings * kSteps + 2) {
  for (int i = 0; i < kCrossings * kSteps; ++i) {
    const double x = static_cast<double>(i) / kSteps;
    const double across = x / kCrossings;
    table_[static_cast<std::size_t>(i)] =
        Sinc(x) * Bessel(kBeta * std::sqrt(1 - across * across)) / Bessel(kBeta);
  }
  SetPace(1);
}

void BandLimitedTap::SetPace(double pace) noexcept {
  edge_ = std::max(kPassed / std::max(pace, 1.0), static_cast<double>(kCrossings) / (kMostReach - 1));
  reach_ = static_cast<int>(std::ceil(kCrossings / edge_));
}

double BandLimitedTap::Weight(double crossings) const noexcept {
  const double place = crossings * kSteps;
  const auto below = static_cast<std::size_t>(place);
  if (below + 1 >= table_.size()) return 0;
  const double part = place - static_cast<double>(below);
  return table_[below] + part * (table_[below + 1] - table_[below]);
}

float BandLimitedTap::At(std::span<const float> source, double between) const noexcept {
  double sum = 0;
  for (int i = 0; i < 2 * reach_; ++i) {
    const double away = std::abs(i - reach_ + 1 - between);
    sum += static_cast<double>(source[static_cast<std::size_t>(i)]) * Weight(away * edge_);
  }
  return static_cast<float>(sum * edge_);
}

}  // namespace engine
