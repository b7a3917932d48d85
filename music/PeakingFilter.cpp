// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/PeakingFilter.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace music {
namespace {

constexpr double kMostGain = 40;
constexpr double kHalfLn2 = std::numbers::ln2 / 2;

/// The cookbook's alpha: from the bandwidth where there is one, else from Q; 0 when there is neither.
double Alpha(const PeakingShape& shape, double w0) {
  if (shape.bandwidth > 0) {
    return std::sin(w0) * std::sinh(kHalfLn2 * std::min(shape.bandwidth, 10.0) * w0 / std::sin(w0));
  }
  return shape.q > 0 ? std::sin(w0) / (2 * shape.q) : 0;
}

}  // namespace

Biquad PeakingFilter(const PeakingShape& shape, int sample_rate) {
  const double w0 = 2 * std::numbers::pi * shape.centre / sample_rate;
  const double alpha = Alpha(shape, w0);
  if (alpha <= 0 || !std::isfinite(alpha)) return {};
  const double a = std::pow(10.0, std::clamp(shape.gain, -kMostGain, kMostGain) / 40);
  const double a0 = 1 + alpha / a;
  Biquad filter;
  filter.b0 = (1 + alpha * a) / a0;
  filter.b1 = filter.a1 = -2 * std::cos(w0) / a0;
  filter.b2 = (1 - alpha * a) / a0;
  filter.a2 = (1 - alpha / a) / a0;
  return filter;
}

double ResponseOf(const Biquad& filter, double frequency, int sample_rate) {
  const double w = 2 * std::numbers::pi * frequency / sample_rate;
  const std::complex<double> z1 = std::polar(1.0, -w);
  const std::complex<double> z2 = z1 * z1;
  const auto above = filter.b0 + filter.b1 * z1 + filter.b2 * z2;
  const auto below = 1.0 + filter.a1 * z1 + filter.a2 * z2;
  return 20 * std::log10(std::max(1e-9, std::abs(above) / std::abs(below)));
}

}  // namespace music
