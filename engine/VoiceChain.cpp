// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/VoiceChain.h"

#include <algorithm>
#include <cmath>

#include "music/CookbookFilters.h"

namespace engine {
namespace {

constexpr double kLowShelf = 200;
constexpr double kMiddle = 1200;
constexpr double kMiddleOctaves = 2;
constexpr double kHighShelf = 5000;
constexpr float kMostBand = 12;

float Within(float value, float lowest, float highest, float otherwise) {
  return std::isfinite(value) ? std::clamp(value, lowest, highest) : otherwise;
}

float Factor(float decibels) {
  return std::pow(10.0F, decibels / 20);
}

double Band(float gain) {
  return static_cast<double>(Within(gain, -kMostBand, kMostBand, 0));
}

void Scale(RampedValue& by, std::span<float> mono) {
  if (by.RestsAt(1)) return;
  for (float& sample : mono) sample *= by.Next();
}

}  // namespace

VoiceShape ShapeOf(const decks::VoiceSettings& settings, int sample_rate) {
  VoiceShape shape;
  shape.gain = Factor(Within(settings.gain, -20, 40, 0));
  const float edge = Within(settings.low_cut, 0, 120, 90);
  if (edge > 0) shape.low_cut = music::HighPassFilter(std::max(80.0, static_cast<double>(edge)), sample_rate);
  shape.gated = settings.gate != decks::GateMode::Off;
  shape.gate.automatic = settings.gate != decks::GateMode::Fixed;
  shape.gate.open = std::pow(10.0F, Within(settings.gate_level, -80, -10, -45) / 10);
  shape.gate.close = shape.gate.open / 4;
  shape.bands = {music::LowShelfFilter(kLowShelf, Band(settings.bass), sample_rate),
                 music::PeakingFilter({kMiddle, kMiddleOctaves, 0, Band(settings.middle)}, sample_rate),
                 music::HighShelfFilter(kHighShelf, Band(settings.treble), sample_rate)};
  shape.compressor.threshold = Within(settings.threshold, -60, 0, -20);
  shape.compressor.slope = settings.compress ? 1 - 1 / Within(settings.ratio, 1, 20, 4) : 0;
  shape.makeup = settings.compress ? Factor(Within(settings.makeup, 0, 24, 0)) : 1;
  return shape;
}

VoiceChain::VoiceChain(int sample_rate)
    : ramp_frames_(sample_rate / 200),
      fall_(std::exp(-3.0F / static_cast<float>(sample_rate))),
      low_cut_(sample_rate),
      gate_(sample_rate),
      bands_{VoiceFilter(sample_rate), VoiceFilter(sample_rate), VoiceFilter(sample_rate)},
      compressor_(sample_rate) {}

void VoiceChain::Set(const VoiceShape& shape) noexcept {
  if (gain_.Target() != shape.gain) gain_.Set(shape.gain, ramp_frames_);
  low_cut_.Set(shape.low_cut);
  gate_.Set(shape.gate);
  gated_ = shape.gated;
  for (std::size_t i = 0; i < bands_.size(); ++i) bands_[i].Set(shape.bands[i]);
  compressor_.Set(shape.compressor);
  if (makeup_.Target() != shape.makeup) makeup_.Set(shape.makeup, ramp_frames_);
}

void VoiceChain::Process(std::span<float> mono) noexcept {
  for (const float sample : mono) input_ = std::max(std::abs(sample), input_ * fall_);
  Scale(gain_, mono);
  low_cut_.Process(mono);
  gate_.SetThrough(!gated_ || kept_open_);
  gate_.Process(mono);
  for (VoiceFilter& band : bands_) band.Process(mono);
  compressor_.Process(mono);
  Scale(makeup_, mono);
  for (const float sample : mono) level_ = std::max(std::abs(sample), level_ * fall_);
}

void VoiceChain::Reset() noexcept {
  gain_.Arrive();
  low_cut_.Reset();
  gate_.Reset();
  for (VoiceFilter& band : bands_) band.Reset();
  compressor_.Reset();
  makeup_.Arrive();
  input_ = level_ = 0;
}

}  // namespace engine
