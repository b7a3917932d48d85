// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effects/EchoLine.h"

#include <cmath>

#include "decks/ports/DeckEffects.h"

namespace engine {
namespace {

/// Repeats of a tone that fits into the delay add up exactly; beyond full scale they do so less and less.
double Bounded(double sample) {
  constexpr double kKnee = 1, kRoom = 0.5;
  const double past = std::abs(sample) - kKnee;
  if (!(past > 0)) return sample;
  return std::copysign(kKnee + kRoom * std::tanh(past / kRoom), sample);
}

}  // namespace

EchoLine::EchoLine(int sample_rate)
    : sample_rate_(sample_rate),
      fade_frames_(std::max(1, sample_rate / 20)),
      longest_(static_cast<int>(decks::kLongestEcho * static_cast<float>(sample_rate)) + 1),
      line_(longest_),
      open_(sample_rate),
      dry_(1, sample_rate),
      sent_(0, sample_rate),
      feedback_(0, sample_rate),
      place_(sample_rate / 2),
      next_place_(place_) {}

void EchoLine::Set(const Wanted& wanted) noexcept {
  wanted_ = wanted;
  open_.Aim(wanted.on);
  dry_.Aim(wanted.on ? wanted.dry : 1);
  sent_.Aim(wanted.sent);
  feedback_.Aim(wanted.feedback);
}

void EchoLine::Arrive() noexcept {
  open_.Arrive();
  for (Smoothed* value : {&dry_, &sent_, &feedback_}) value->JumpTo(value->Target());
}

inline BothSides EchoLine::Read() noexcept {
  if (fade_left_ == 0) return line_.Read(place_);
  const double part = static_cast<double>(fade_left_) / fade_frames_;
  const BothSides sound = part * line_.Read(place_) + (1 - part) * line_.Read(next_place_);
  if (--fade_left_ == 0) place_ = next_place_;
  return sound;
}

void EchoLine::Process(std::span<float> stereo) noexcept {
  if (Idle()) return;
  const int wanted = std::clamp(
      static_cast<int>(std::lround(wanted_.seconds * static_cast<float>(sample_rate_))), 1, longest_);
  if (!Rings()) place_ = next_place_ = wanted;  // nothing in it is moved
  if (fade_left_ == 0 && wanted != place_) {
    next_place_ = wanted;
    fade_left_ = fade_frames_;
  }
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2) {
    const BothSides in = BothOf(stereo[i], stereo[i + 1]);
    const BothSides repeat = Read();
    const double into = static_cast<double>(sent_.Next() * open_.Next());
    const BothSides sum = into * in + static_cast<double>(feedback_.Next()) * repeat;
    line_.Write(BothSides{Bounded(sum[0]), Bounded(sum[1])});
    const BothSides heard = static_cast<double>(dry_.Next()) * in + repeat;
    stereo[i] = static_cast<float>(heard[0]);
    stereo[i + 1] = static_cast<float>(heard[1]);
  }
}

}  // namespace engine
