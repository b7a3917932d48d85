// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/TruePeak.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace engine {
namespace {

constexpr std::size_t kBetween = 3;  // values between two frames
constexpr std::size_t kStride = 32;  // frames at a time, a number that compilers know
static_assert(TruePeak::kMostFrames % kStride == 0);

struct Phase {
  std::array<float, TruePeak::kTaps> taps{};
  std::size_t first = 0;
  std::size_t end = 0;
};
/// A long and a short filter's: the long one comes nearer to a converter, the short one is like those that
/// meters have, which read up to 0.4 dB more of sound at the edge of the band.
using Phases = std::array<Phase, 2 * kBetween>;

/// Modified Bessel function of the first kind and order 0.
double BesselI0(double x) {
  double sum = 1;
  double term = 1;
  for (int k = 1; k < 30; ++k) {
    term *= x / (2 * k) * x / (2 * k);
    sum += term;
  }
  return sum;
}

/// A sinc under a Kaiser window, moved by quarters of a frame; what stands still passes unchanged.
Phase MakePhase(int taps, double beta, std::size_t quarters) {
  const double half = taps / 2.0;
  Phase phase;
  phase.first = static_cast<std::size_t>(TruePeak::kTaps - taps) / 2;
  phase.end = phase.first + static_cast<std::size_t>(taps);
  double sum = 0;
  std::array<double, TruePeak::kTaps> values{};
  for (std::size_t k = phase.first; k < phase.end; ++k) {
    const double x = static_cast<double>(k) - (TruePeak::kTaps / 2 - 1) - static_cast<double>(quarters) / 4;
    const double inside = std::max(0.0, 1 - x * x / (half * half));
    const double window = BesselI0(beta * std::sqrt(inside)) / BesselI0(beta);
    values[k] = std::sin(std::numbers::pi * x) / (std::numbers::pi * x) * window;
    sum += values[k];
  }
  for (std::size_t k = phase.first; k < phase.end; ++k) phase.taps[k] = static_cast<float>(values[k] / sum);
  return phase;
}

Phases MakePhases() {
  Phases phases;
  for (std::size_t i = 0; i < kBetween; ++i) {
    phases[i] = MakePhase(TruePeak::kTaps, 4, i + 1);
    phases[kBetween + i] = MakePhase(TruePeak::kTaps / 2, 5.5, i + 1);
  }
  return phases;
}

const Phases kPhases = MakePhases();

/// The largest factor by which a value between frames can pass all the frames around it.
const float kMostOver = [] {
  float most = 1;
  for (const Phase& phase : kPhases) {
    float sum = 0;
    for (const float tap : phase.taps) sum += std::abs(tap);
    most = std::max(most, sum);
  }
  return most;
}();

}  // namespace

void TruePeak::Reset() noexcept {
  sides_ = {};
}

void TruePeak::Read(std::span<const float> stereo, std::span<float> peaks, float above) noexcept {
  const std::size_t frames = peaks.size();
  float largest = 0;
  for (std::size_t i = 0; i < frames; ++i) {
    for (std::size_t s = 0; s < sides_.size(); ++s) sides_[s][kHistory + i] = stereo[2 * i + s];
  }
  for (const Side& side : sides_) {
    for (std::size_t i = 0; i < kHistory + frames; ++i) largest = std::max(largest, std::abs(side[i]));
  }
  std::fill(peaks.begin(), peaks.end(), 0.0F);
  for (Side& side : sides_) {
    if (largest * kMostOver > above) Measure(side, peaks);
    std::copy_n(side.begin() + static_cast<std::ptrdiff_t>(frames), kHistory, side.begin());
  }
}

void TruePeak::Measure(const Side& side, std::span<float> peaks) noexcept {
  for (std::size_t begin = 0; begin < peaks.size(); begin += kStride) {
    const float* in = side.data() + begin;
    std::array<float, kStride> most;
    for (std::size_t i = 0; i < kStride; ++i) most[i] = std::abs(in[i + kTaps / 2 - 1]);
    for (const Phase& phase : kPhases) {
      std::array<float, kStride> sum{};
      for (std::size_t k = phase.first; k < phase.end; ++k) {
        for (std::size_t i = 0; i < kStride; ++i) sum[i] += phase.taps[k] * in[i + k];
      }
      for (std::size_t i = 0; i < kStride; ++i) most[i] = std::max(most[i], std::abs(sum[i]));
    }
    const std::size_t count = std::min<std::size_t>(kStride, peaks.size() - begin);
    for (std::size_t i = 0; i < count; ++i) peaks[begin + i] = std::max(peaks[begin + i], most[i]);
  }
}

}  // namespace engine
