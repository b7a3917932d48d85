// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/Spectrum.h"

#include <cmath>
#include <complex>
#include <numbers>
#include <utility>

namespace music {
namespace {

using Complex = std::complex<float>;
using Frames = std::array<Complex, kSpectrumFrames>;

struct TransformTables {
  std::array<float, kSpectrumFrames> window;
  std::array<Complex, kSpectrumFrames / 2> turns;  ///< the unit circle clockwise, half of it
  std::array<std::size_t, kSpectrumFrames> reversed;

  TransformTables() {
    constexpr double kTurn = 2 * std::numbers::pi / double(kSpectrumFrames);
    for (std::size_t i = 0; i < kSpectrumFrames; ++i) {
      window[i] = static_cast<float>(0.5 - 0.5 * std::cos(kTurn * double(i)));
      reversed[i] = 0;
      for (std::size_t bit = 1; bit < kSpectrumFrames; bit *= 2) {
        reversed[i] = reversed[i] * 2 + ((i & bit) != 0 ? 1 : 0);
      }
    }
    for (std::size_t i = 0; i < turns.size(); ++i) turns[i] = Complex(std::polar(1.0, -kTurn * double(i)));
  }
};

/// In place, of values in bit-reversed order (Cooley and Tukey, 1965).
void Transform(Frames& values, const TransformTables& tables) {
  for (std::size_t half = 1; half < kSpectrumFrames; half *= 2) {
    const std::size_t stride = kSpectrumFrames / (2 * half);
    for (std::size_t block = 0; block < kSpectrumFrames; block += 2 * half) {
      for (std::size_t i = block; i < block + half; ++i) {
        const Complex turned = values[i + half] * tables.turns[(i - block) * stride];
        values[i + half] = values[i] - turned;
        values[i] += turned;
      }
    }
  }
}

}  // namespace

Spectrum SpectrumOf(std::span<const float, kSpectrumFrames> samples) {
  static const TransformTables tables;
  Frames values;
  for (std::size_t i = 0; i < kSpectrumFrames; ++i) {
    values[tables.reversed[i]] = samples[i] * tables.window[i];
  }
  Transform(values, tables);
  // Half of a sine's power lies at the negative frequency, and the window lets half of the samples through.
  constexpr float kScale = 4.0F / float(kSpectrumFrames);
  Spectrum spectrum;
  for (std::size_t bin = 0; bin < kSpectrumBins; ++bin) spectrum[bin] = std::abs(values[bin]) * kScale;
  return spectrum;
}

}  // namespace music
