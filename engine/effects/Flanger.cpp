// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effects/Flanger.h"

#include <numbers>

namespace engine {
namespace {

constexpr double kShortest = 0.0005;  // s
constexpr double kLongest = 0.005;
constexpr double kFeedback = 0.6;

}  // namespace

Flanger::Flanger(int sample_rate)
    : sample_rate_(sample_rate),
      line_(static_cast<int>(kLongest * sample_rate) + 3),
      on_(sample_rate),
      wet_(0.5F, sample_rate) {}

void Flanger::Set(const decks::EffectSettings::Flanger& settings) noexcept {
  if (Idle() && settings.on) {
    line_.Clear();
    phase_ = 0;
    wet_.JumpTo(settings.wet);
  }
  wanted_ = settings;
  on_.Aim(settings.on);
  wet_.Aim(settings.wet);
}

void Flanger::Arrive() noexcept {
  on_.Arrive();
  wet_.JumpTo(wet_.Target());
}

void Flanger::Process(std::span<float> stereo) noexcept {
  if (Idle()) return;
  const double turn = static_cast<double>(wanted_.hertz) / sample_rate_;
  const double middle = (kShortest + kLongest) / 2 * sample_rate_;
  const double swing = (kLongest - kShortest) / 2 * sample_rate_;
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2) {
    const BothSides in = BothOf(stereo[i], stereo[i + 1]);
    const double back = middle - swing * std::cos(2 * std::numbers::pi * phase_);
    phase_ += turn;
    if (phase_ >= 1) phase_ -= 1;
    const BothSides late = line_.ReadBetween(std::max(1.0, back));
    line_.Write(in + kFeedback * late);
    // The loop is up to 2.5 times as loud as what goes into it.
    const double part = static_cast<double>(wet_.Next()) * static_cast<double>(on_.Next());
    const BothSides heard = in + part * ((1 - kFeedback) * 2.0 * late - in);
    stereo[i] = static_cast<float>(heard[0]);
    stereo[i + 1] = static_cast<float>(heard[1]);
  }
}

}  // namespace engine
