// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/testing/Measure.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace platform::codec::testing {

double Rms(const Channel& channel) {
  double sum = 0;
  for (std::int64_t n = 0; n < channel.Frames(); ++n) sum += channel.At(n) * channel.At(n);
  return channel.Frames() == 0 ? 0 : std::sqrt(sum / static_cast<double>(channel.Frames()));
}

double Peak(const Channel& channel) {
  double peak = 0;
  for (std::int64_t n = 0; n < channel.Frames(); ++n) peak = std::max(peak, std::abs(channel.At(n)));
  return peak;
}

double LevelAt(const Channel& channel, double frequency, int sample_rate) {
  const auto frames = static_cast<double>(channel.Frames());
  const double turn = 2 * std::numbers::pi;
  std::complex<double> sum = 0;
  for (std::int64_t n = 0; n < channel.Frames(); ++n) {
    const auto t = static_cast<double>(n);
    const double window = 1 - std::cos(turn * (t + 0.5) / frames);  // mean 1, no leak from the ends
    sum += window * channel.At(n) * std::polar(1.0, -turn * frequency * t / sample_rate);
  }
  return channel.Frames() == 0 ? 0 : 2 * std::abs(sum) / frames;
}

double LargestStep(const Channel& channel) {
  double step = 0;
  for (std::int64_t n = 1; n < channel.Frames(); ++n) {
    step = std::max(step, std::abs(channel.At(n) - channel.At(n - 1)));
  }
  return step;
}

}  // namespace platform::codec::testing
