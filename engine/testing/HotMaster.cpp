// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/testing/HotMaster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <random>

namespace engine::testing {

std::vector<HotMaster> HotMasters(int sample_rate) {
  std::mt19937 random(5);
  std::normal_distribution<double> noise(0, 1);
  double low = 0;
  double high = 0;
  const auto tone = [](double hertz, double time) { return std::sin(2 * std::numbers::pi * hertz * time); };
  const auto one = [&](std::string name, const std::function<double(double)>& at) {
    HotMaster master{std::move(name), std::vector<float>(static_cast<std::size_t>(sample_rate))};
    for (std::size_t i = 0; i < master.samples.size(); ++i) {
      const double value = std::clamp(at(static_cast<double>(i) / sample_rate), -1.0, 1.0);
      master.samples[i] = static_cast<float>(4 * value);
    }
    return master;
  };
  return {
      one("tone between the samples",
          [&](double t) { return 0.34 * tone(sample_rate / 4.0, t + 0.5 / sample_rate); }),
      one("clipped noise", [&](double) { return 2.2 * (low += 0.3 * (noise(random) - low)); }),
      one("bursts of noise",
          [&](double t) { return (std::fmod(t, 0.5) < 0.02 ? 0.5 : 0.05) * noise(random); }),
      one("bass drum",
          [&](double t) { return (std::fmod(t, 0.5) < 0.25 ? 0.8 * tone(55, t) : 0) + 0.2 * tone(997, t); }),
      one("clipped mix",
          [&](double t) {
            low += 0.05 * (noise(random) - low);
            high += 0.4 * (noise(random) - high);
            return 6 * low + high + 0.5 * tone(60, t);
          }),
      one("square and hi-hat",
          [&](double t) {
            return (tone(220, t) > 0 ? 0.5 : -0.5) + (std::fmod(t, 0.25) < 0.03 ? 0.4 * noise(random) : 0);
          }),
  };
}

double TruePeakOf(const std::vector<float>& samples) {
  constexpr std::size_t kTaps = 64;
  constexpr int kParts = 16;
  float peak = 0;
  for (int part = 0; part < kParts; ++part) {
    std::array<float, kTaps> filter{};
    double sum = 0;
    for (std::size_t k = 0; k < kTaps; ++k) {
      const double x = static_cast<double>(k) - (kTaps / 2 - 1) - static_cast<double>(part) / kParts;
      const double window = 0.5 + 0.5 * std::cos(std::numbers::pi * x / (kTaps / 2 + 1));
      const double sinc = x == 0 ? 1 : std::sin(std::numbers::pi * x) / (std::numbers::pi * x);
      filter[k] = static_cast<float>(sinc * window);
      sum += sinc * window;
    }
    for (std::size_t i = 0; i + kTaps <= samples.size(); ++i) {
      float value = 0;
      for (std::size_t k = 0; k < kTaps; ++k) value += filter[k] * samples[i + k];
      peak = std::max(peak, std::abs(value) / static_cast<float>(sum));
    }
  }
  return 20 * std::log10(static_cast<double>(peak));
}

}  // namespace engine::testing
