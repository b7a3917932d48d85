// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/VoiceCompressor.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

constexpr float kKnee = 6;
constexpr float kQuietest = 1e-6F;

float Share(double seconds, int sample_rate) {
  return static_cast<float>(std::exp(-1 / (seconds * sample_rate)));
}

}  // namespace

VoiceCompressor::VoiceCompressor(int sample_rate)
    : attack_(Share(0.005, sample_rate)), release_(Share(0.12, sample_rate)) {}

float VoiceCompressor::Wanted(float level) const noexcept {
  const float over = level - curve_.threshold;
  if (2 * over <= -kKnee) return 0;
  if (2 * over >= kKnee) return curve_.slope * over;
  const float into = over + kKnee / 2;
  return curve_.slope * into * into / (2 * kKnee);
}

void VoiceCompressor::Process(std::span<float> mono) noexcept {
  constexpr float kNothing = 1e-4F;
  if (curve_.slope == 0 && held_ < kNothing && reduction_ < kNothing) return Reset();
  for (float& sample : mono) {
    const float wanted = Wanted(20 * std::log10(std::max(std::abs(sample), kQuietest)));
    held_ = std::max(wanted, release_ * held_ + (1 - release_) * wanted);
    reduction_ = attack_ * reduction_ + (1 - attack_) * held_;
    if (reduction_ > kNothing) sample *= std::pow(10.0F, -reduction_ / 20);
  }
}

}  // namespace engine
