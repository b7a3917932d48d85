// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effects/Turns.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace engine {

void Swap::Process(std::span<float> stereo) noexcept {
  if (Idle()) return;
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2) {
    if (on_.All()) {
      std::swap(stereo[i], stereo[i + 1]);
      continue;
    }
    const float moved = on_.Next() * (stereo[i + 1] - stereo[i]);
    stereo[i] += moved;
    stereo[i + 1] -= moved;
  }
}

void Rotate::Set(const decks::EffectSettings::Rotate& settings) noexcept {
  if (Idle()) phase_ = 0;
  wanted_ = settings;
  depth_.Aim(settings.on ? settings.depth : 0);
}

void Rotate::Process(std::span<float> stereo) noexcept {
  if (Idle()) return;
  const double turn = static_cast<double>(wanted_.hertz) / sample_rate_;
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2) {
    const double angle =
        std::numbers::pi / 4 * static_cast<double>(depth_.Next()) * std::sin(2 * std::numbers::pi * phase_);
    phase_ += turn;
    if (phase_ >= 1) phase_ -= 1;
    const auto cosine = static_cast<float>(std::cos(angle)), sine = static_cast<float>(std::sin(angle));
    const float left = stereo[i], right = stereo[i + 1];
    stereo[i] = cosine * left - sine * right;
    stereo[i + 1] = sine * left + cosine * right;
  }
}

}  // namespace engine
