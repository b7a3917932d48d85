// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effects/EffectChain.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

constexpr float kMixedFeedback = 0.4F;

EchoLine::Wanted LineOf(const decks::EffectSettings::Echo& echo) {
  return {echo.on, 1, echo.level, std::min(echo.level, decks::kMostFeedback), echo.seconds};
}

EchoLine::Wanted LineOf(const decks::EffectSettings::Echo3& echo) {
  return {echo.on, echo.dry, echo.wet, kMixedFeedback, echo.seconds};
}

}  // namespace

EffectChain::EffectChain(int sample_rate, const decks::EffectSettings& settings)
    : memory_frames_(sample_rate / 4),
      filter_(sample_rate),
      low_pass_(sample_rate),
      flanger_(sample_rate),
      echo_(sample_rate),
      echo3_(sample_rate),
      reverb_(sample_rate),
      swap_(sample_rate),
      rotate_(sample_rate),
      quiet_(memory_frames_) {
  Set(settings);
  Take(settings);
  filter_.Arrive();
  low_pass_.Arrive();
  flanger_.Arrive();
  echo_.Arrive();
  echo3_.Arrive();
  reverb_.Arrive();
  swap_.Arrive();
  rotate_.Arrive();
}

void EffectChain::Set(const decks::EffectSettings& settings) noexcept {
  settings_.Write(settings);
}

void EffectChain::Take(const decks::EffectSettings& settings) noexcept {
  taken_ = settings;
  filter_.Set(settings.filter);
  low_pass_.Set(settings.low_pass);
  flanger_.Set(settings.flanger);
  echo_.Set(LineOf(settings.echo));
  echo3_.Set(LineOf(settings.echo3));
  reverb_.Set(settings.reverb);
  swap_.Set(settings.swap);
  rotate_.Set(settings.rotate);
}

bool EffectChain::Idle() const noexcept {
  return filter_.Idle() && low_pass_.Idle() && flanger_.Idle() && echo_.Idle() && echo3_.Idle() &&
         reverb_.Idle() && swap_.Idle() && rotate_.Idle();
}

void EffectChain::Process(std::span<float> stereo) noexcept {
  if (const decks::EffectSettings& settings = settings_.Read(); settings != taken_) Take(settings);
  if (Idle()) {
    quiet_ = memory_frames_;
    return;
  }
  filter_.Process(stereo);
  low_pass_.Process(stereo);
  flanger_.Process(stereo);
  echo_.Process(stereo);
  echo3_.Process(stereo);
  reverb_.Process(stereo);
  swap_.Process(stereo);
  rotate_.Process(stereo);
  Listen(stereo);
}

void EffectChain::Listen(std::span<const float> stereo) noexcept {
  constexpr float kInaudible = 1e-5F;  // -100 dB
  const bool heard =
      std::any_of(stereo.begin(), stereo.end(), [](float s) { return std::abs(s) >= kInaudible; });
  quiet_ = heard ? 0 : std::min(quiet_ + static_cast<int>(stereo.size() / 2), memory_frames_);
}

void EffectChain::Reset() noexcept {
  filter_.Clear();
  low_pass_.Clear();
  flanger_.Clear();
  echo_.Clear();
  echo3_.Clear();
  reverb_.Clear();
  quiet_ = memory_frames_;
}

bool EffectChain::Rings() const noexcept {
  return quiet_ < memory_frames_ || echo_.Rings() || echo3_.Rings() || reverb_.Rings();
}

}  // namespace engine
