// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <span>
#include <vector>

#include "decks/ports/DeckEffects.h"
#include "engine/effects/DelayLine.h"
#include "engine/effects/Fade.h"

namespace engine {

/// A room: eight lines that feed one another, behind a delay and four all-passes a side.
///
/// J.-M. Jot, A. Chaigne, "Digital delay networks for designing artificial reverberators", 1991: each line
/// loses as much as the decay asks for its length, so that all of them die away together. Whatever the decay,
/// a steady sound rings as loudly, at full level some 7 dB above what goes in. Law: switched off it takes in
/// nothing new and rings out. Threads: the callback.
class Reverb {
 public:
  explicit Reverb(int sample_rate);

  void Set(const decks::EffectSettings::Reverb& settings) noexcept;
  void Arrive() noexcept;
  [[nodiscard]] bool Idle() const noexcept { return !wanted_.on && open_.Nothing() && !Rings(); }
  [[nodiscard]] bool Rings() const noexcept { return quiet_ < longest_; }
  void Process(std::span<float> stereo) noexcept;
  void Clear() noexcept;

 private:
  static constexpr std::size_t kLines = 8;
  static constexpr std::size_t kDiffusers = 4;
  struct Line {
    std::vector<float> sound;
    std::size_t at = 0;
    float damped = 0;
    float gain = 0, gain_step = 0, gain_target = 0;
  };
  struct Diffuser {
    std::vector<float> sound;
    std::size_t at = 0;
    [[nodiscard]] float Step(float in) noexcept;
  };

  void AimGains(float seconds) noexcept;
  [[nodiscard]] BothSides Ring(float left, float right) noexcept;

  const int sample_rate_;
  const int longest_;  ///< frames of silence after which nothing is left anywhere
  decks::EffectSettings::Reverb wanted_;
  DelayLine before_;
  const int before_frames_;
  std::array<std::array<Diffuser, kDiffusers>, 2> diffusers_;
  std::array<Line, kLines> lines_;
  int gains_left_ = 0;
  OnOff open_;
  Smoothed level_;
  Smoothed into_;  ///< what goes into the lines, so that they are as loud at every decay
  int quiet_;
};

}  // namespace engine
