// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/CookbookFilters.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace music {
namespace {

constexpr double kMostShelf = 40;

bool Within(double edge, int sample_rate) {
  return edge > 0 && edge < 0.5 * sample_rate;
}

/// The cookbook's shelves with S = 1; up is its sign in front of the cosine: 1 for the low one.
Biquad Shelf(double edge, double gain, int sample_rate, double up) {
  if (!Within(edge, sample_rate) || gain == 0 || !std::isfinite(gain)) return {};
  const double w0 = 2 * std::numbers::pi * edge / sample_rate;
  const double a = std::pow(10.0, std::clamp(gain, -kMostShelf, kMostShelf) / 40);
  const double cosine = up * std::cos(w0);
  const double slope = 2 * std::sqrt(a) * std::sin(w0) / std::numbers::sqrt2;
  const double a0 = (a + 1) + (a - 1) * cosine + slope;
  Biquad filter;
  filter.b0 = a * ((a + 1) - (a - 1) * cosine + slope) / a0;
  filter.b1 = up * 2 * a * ((a - 1) - (a + 1) * cosine) / a0;
  filter.b2 = a * ((a + 1) - (a - 1) * cosine - slope) / a0;
  filter.a1 = up * -2 * ((a - 1) + (a + 1) * cosine) / a0;
  filter.a2 = ((a + 1) + (a - 1) * cosine - slope) / a0;
  return filter;
}

}  // namespace

Biquad HighPassFilter(double edge, int sample_rate) {
  if (!Within(edge, sample_rate)) return {};
  const double w0 = 2 * std::numbers::pi * edge / sample_rate;
  const double alpha = std::sin(w0) / std::numbers::sqrt2;
  const double cosine = std::cos(w0);
  const double a0 = 1 + alpha;
  return {(1 + cosine) / 2 / a0, -(1 + cosine) / a0, (1 + cosine) / 2 / a0, -2 * cosine / a0,
          (1 - alpha) / a0};
}

Biquad LowShelfFilter(double edge, double gain, int sample_rate) {
  return Shelf(edge, gain, sample_rate, 1);
}

Biquad HighShelfFilter(double edge, double gain, int sample_rate) {
  return Shelf(edge, gain, sample_rate, -1);
}

}  // namespace music
