// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "decks/ports/DeckEffects.h"
#include "engine/effects/DelayLine.h"
#include "engine/effects/Fade.h"

namespace engine {

/// The sound over itself, 0.5 to 5 ms late, there and back. Threads: the callback.
class Flanger {
 public:
  explicit Flanger(int sample_rate);

  void Set(const decks::EffectSettings::Flanger& settings) noexcept;
  void Arrive() noexcept;
  [[nodiscard]] bool Idle() const noexcept { return !wanted_.on && on_.Nothing(); }
  void Process(std::span<float> stereo) noexcept;
  void Clear() noexcept { line_.Clear(); }

 private:
  const int sample_rate_;
  decks::EffectSettings::Flanger wanted_;
  DelayLine line_;
  OnOff on_;
  Smoothed wet_;
  double phase_ = 0;  ///< turns
};

}  // namespace engine
