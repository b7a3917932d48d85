// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "decks/ports/DeckEffects.h"
#include "engine/effects/Fade.h"

namespace engine {

/// Left and right change places. Threads: the callback.
class Swap {
 public:
  explicit Swap(int sample_rate) : on_(sample_rate) {}
  void Set(bool on) noexcept { on_.Aim(on); }
  void Arrive() noexcept { on_.Arrive(); }
  [[nodiscard]] bool Idle() const noexcept { return on_.Nothing(); }
  void Process(std::span<float> stereo) noexcept;

 private:
  OnOff on_;
};

/// The picture swings from one side to the other.
///
/// Turned by at most 45 degrees each way: what lies in the middle goes as far as one side, always of the same
/// power and never against itself. Threads: the callback.
class Rotate {
 public:
  explicit Rotate(int sample_rate) : sample_rate_(sample_rate), depth_(0, sample_rate) {}
  void Set(const decks::EffectSettings::Rotate& settings) noexcept;
  void Arrive() noexcept { depth_.JumpTo(depth_.Target()); }
  [[nodiscard]] bool Idle() const noexcept { return depth_.RestsAt(0); }
  void Process(std::span<float> stereo) noexcept;

 private:
  const int sample_rate_;
  decks::EffectSettings::Rotate wanted_;
  Smoothed depth_;
  double phase_ = 0;  ///< swings
};

}  // namespace engine
