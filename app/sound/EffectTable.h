// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "decks/ports/DeckEffects.h"

namespace app {

/// What a hand turns at the effects of a deck; sliders from 0 to 100, as they are stored.
enum class EffectControl {
  Filter,
  FilterResonance,
  LowPassCut,
  LowPassResonance,
  FlangerSpeed,
  FlangerWetdry,
  EchoLevel,
  EchoDelay,
  Echo3DryMix,
  Echo3WetMix,
  Echo3Delay,
  ReverbLevel,
  ReverbDelay,
  RotateSpeed,
  RotateDepth
};
inline constexpr std::size_t kEffectControls = 15;
inline constexpr int kMiddleFilter = 50;

/// One of them: its key in the store, where it rests, and what its slider means.
struct EffectKnob {
  enum class Law { Linear, Exponential };
  enum class Unit { Position, Share, Hertz, Q, Seconds, Turns };
  EffectControl control;
  decks::EffectKind of;
  std::string_view key;
  int rest;
  Law law;
  float least, most;
  Unit unit;
};
[[nodiscard]] std::span<const EffectKnob, kEffectControls> EffectKnobs();
[[nodiscard]] const EffectKnob& KnobOf(EffectControl control);
/// What a slider means, in the knob's unit.
[[nodiscard]] float MeaningOf(const EffectKnob& knob, int slider);

/// One effect: the keys of its switch and of its lock to the beat; empty where it has none.
struct EffectKeys {
  std::string_view on;
  std::string_view beats;
};
[[nodiscard]] EffectKeys KeysOf(decks::EffectKind kind);
[[nodiscard]] constexpr std::size_t PlaceOf(decks::EffectKind kind) {
  return static_cast<std::size_t>(kind);
}
[[nodiscard]] constexpr std::size_t PlaceOf(EffectControl control) {
  return static_cast<std::size_t>(control);
}

/// How long an effect that is locked to the beat takes, in quarters of a beat; 0 is as its knob says.
inline constexpr std::array kBeatQuarters{0, 1, 2, 3, 4, 8, 16};

/// What is chosen on one deck.
struct EffectChoices {
  EffectChoices();
  std::array<int, kEffectControls> sliders;
  std::array<bool, decks::kEffectKinds> on{};
  std::array<int, decks::kEffectKinds> quarters{};  ///< of kBeatQuarters
  bool operator==(const EffectChoices&) const = default;
};

/// As it is to sound. bpm: as it is heard; 0 when unknown, then what is locked goes by its knob. An echo that
/// would be too long is halved until it is not.
[[nodiscard]] decks::EffectSettings SettingsOf(const EffectChoices& choices, double bpm);

}  // namespace app
