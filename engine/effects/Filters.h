// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "decks/ports/DeckEffects.h"
#include "engine/effects/Fade.h"
#include "engine/effects/StateFilter.h"

namespace engine {

/// The one knob of a deck: a low pass that closes to the left, a high pass that closes to the right.
///
/// Law: within 2 % of the middle every sample passes bit for bit. Threads: the callback.
class KnobFilter {
 public:
  explicit KnobFilter(int sample_rate) : filter_(sample_rate), on_(sample_rate) {}

  void Set(const decks::EffectSettings::Filter& settings) noexcept { wanted_ = settings; }
  /// Where it was set, without a way there.
  void Arrive() noexcept;
  [[nodiscard]] bool Idle() const noexcept { return on_.Nothing() && SideOf(wanted_.position) == Side::None; }
  void Process(std::span<float> stereo) noexcept;
  void Clear() noexcept { filter_.Clear(); }

 private:
  enum class Side { None, Low, High };
  [[nodiscard]] static Side SideOf(float position) noexcept;
  [[nodiscard]] static float EdgeOf(Side side, float position) noexcept;

  decks::EffectSettings::Filter wanted_;
  StateFilter filter_;
  OnOff on_;
  Side side_ = Side::None;
};

/// The low pass with a switch of its own. Law: off, or with its edge wide open, every sample passes bit for
/// bit. Threads: the callback.
class LowPassFilter {
 public:
  explicit LowPassFilter(int sample_rate) : filter_(sample_rate), on_(sample_rate) {}

  void Set(const decks::EffectSettings::LowPass& settings) noexcept;
  void Arrive() noexcept;
  [[nodiscard]] bool Idle() const noexcept { return on_.Nothing() && !Closes(); }
  void Process(std::span<float> stereo) noexcept;
  void Clear() noexcept { filter_.Clear(); }

 private:
  [[nodiscard]] bool Closes() const noexcept { return wanted_.on && wanted_.hertz < kOpen; }

  static constexpr float kOpen = 19'999;
  decks::EffectSettings::LowPass wanted_;
  StateFilter filter_;
  OnOff on_;
};

}  // namespace engine
