// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effects/Filters.h"

#include <cmath>

namespace engine {
namespace {

constexpr float kDeadZone = 0.02F;
constexpr float kLowOpen = 20'000, kLowClosed = 60;    // Hz
constexpr float kHighOpen = 20, kHighClosed = 12'000;  // Hz

}  // namespace

KnobFilter::Side KnobFilter::SideOf(float position) noexcept {
  if (std::abs(position) <= kDeadZone) return Side::None;
  return position < 0 ? Side::Low : Side::High;
}

float KnobFilter::EdgeOf(Side side, float position) noexcept {
  const float way = std::max(0.0F, (std::abs(position) - kDeadZone) / (1 - kDeadZone));
  const float open = side == Side::Low ? kLowOpen : kHighOpen;
  const float closed = side == Side::Low ? kLowClosed : kHighClosed;
  return open * std::pow(closed / open, way);
}

void KnobFilter::Arrive() noexcept {
  side_ = SideOf(wanted_.position);
  on_.Aim(side_ != Side::None);
  on_.Arrive();
  filter_.JumpTo(EdgeOf(side_, wanted_.position), wanted_.q);
}

void KnobFilter::Process(std::span<float> stereo) noexcept {
  const Side wanted = SideOf(wanted_.position);
  if (on_.Nothing()) {
    if (wanted == Side::None) return;
    side_ = wanted;
    filter_.Clear();
    filter_.JumpTo(EdgeOf(side_, 0), wanted_.q);  // it comes in wide open
  }
  // Past the middle one side goes before the other one comes.
  on_.Aim(side_ == wanted);
  filter_.Aim(EdgeOf(side_, side_ == wanted ? wanted_.position : 0), wanted_.q);
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2) {
    const BothSides in = BothOf(stereo[i], stereo[i + 1]);
    const StateFilter::Outputs out = filter_.Step(in);
    const BothSides heard =
        in + static_cast<double>(on_.Next()) * ((side_ == Side::Low ? out.low : out.high) - in);
    stereo[i] = static_cast<float>(heard[0]);
    stereo[i + 1] = static_cast<float>(heard[1]);
  }
}

void LowPassFilter::Set(const decks::EffectSettings::LowPass& settings) noexcept {
  if (on_.Nothing()) {
    filter_.Clear();
    filter_.JumpTo(settings.hertz, settings.q);
  }
  wanted_ = settings;
  on_.Aim(Closes());
  filter_.Aim(settings.hertz, settings.q);
}

void LowPassFilter::Arrive() noexcept {
  on_.Arrive();
  filter_.JumpTo(wanted_.hertz, wanted_.q);
}

void LowPassFilter::Process(std::span<float> stereo) noexcept {
  if (Idle()) return;
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2) {
    const BothSides in = BothOf(stereo[i], stereo[i + 1]);
    const BothSides heard = in + static_cast<double>(on_.Next()) * (filter_.Step(in).low - in);
    stereo[i] = static_cast<float>(heard[0]);
    stereo[i + 1] = static_cast<float>(heard[1]);
  }
}

}  // namespace engine
