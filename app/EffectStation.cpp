// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/EffectStation.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

#include "app/DeckRack.h"
#include "app/StationContext.h"
#include "support/Settings.h"
#include "support/Text.h"

namespace app {
namespace {

std::optional<int> NumberOf(const StoredSection& section, std::string_view key) {
  const auto number = support::ParseReal(support::Trim(ValueOf(section, key)));
  if (!number || !std::isfinite(*number)) return std::nullopt;
  return static_cast<int>(std::lround(std::clamp(*number, 0.0, 100.0)));
}

bool IsBeatLength(int quarters) {
  return std::find(kBeatQuarters.begin(), kBeatQuarters.end(), quarters) != kBeatQuarters.end();
}

bool FlagOf(const StoredSection& section, std::string_view key) {
  const std::string_view text = support::Trim(ValueOf(section, key));
  return support::EqualsIgnoringCase(text, "True") || support::LeadingInteger(text) != 0;
}

EffectChoices ChoicesOf(const StoredSection& section) {
  EffectChoices choices;
  for (const EffectKnob& knob : EffectKnobs()) {
    choices.sliders[PlaceOf(knob.control)] = NumberOf(section, knob.key).value_or(knob.rest);
  }
  for (std::size_t i = 0; i < choices.on.size(); ++i) {
    const EffectKeys keys = KeysOf(static_cast<decks::EffectKind>(i));
    if (!keys.on.empty()) choices.on[i] = FlagOf(section, keys.on);
    const int quarters = keys.beats.empty() ? 0 : NumberOf(section, keys.beats).value_or(0);
    choices.quarters[i] = IsBeatLength(quarters) ? quarters : 0;
  }
  return choices;
}

std::string SectionOf(int deck) {
  return "Player" + std::to_string(deck);
}

}  // namespace

EffectStation::EffectStation(const StationContext& context, DeckRack& rack, support::Settings& settings)
    : context_(context), rack_(rack), settings_(settings) {}

void EffectStation::StartUp(const Preferences& stored) {
  for (const int deck : {1, 2}) {
    context_.conductor->Order(rack_.Deck(deck).Effects(), &EffectUnits::Restore,
                              ChoicesOf(stored.decks[static_cast<std::size_t>(deck - 1)].effects));
  }
}

void EffectStation::Turn(int deck, EffectControl control, int slider) {
  slider = std::clamp(slider, 0, 100);
  settings_.SetNumber(SectionOf(deck), KnobOf(control).key, slider);
  context_.conductor->Order(rack_.Deck(deck).Effects(), &EffectUnits::Turn, control, slider);
}

void EffectStation::Switch(int deck, decks::EffectKind kind, bool on) {
  const EffectKeys keys = KeysOf(kind);
  if (keys.on.empty()) return;
  settings_.SetFlag(SectionOf(deck), keys.on, on);
  context_.conductor->Order(rack_.Deck(deck).Effects(), &EffectUnits::Switch, kind, on);
}

void EffectStation::Hold(int deck, decks::EffectKind kind, bool held) {
  context_.conductor->Order(rack_.Deck(deck).Effects(), &EffectUnits::Hold, kind, held);
}

void EffectStation::LockToBeat(int deck, decks::EffectKind kind, int quarters) {
  const EffectKeys keys = KeysOf(kind);
  if (keys.beats.empty() || !IsBeatLength(quarters)) return;
  settings_.SetNumber(SectionOf(deck), keys.beats, quarters);
  context_.conductor->Order(rack_.Deck(deck).Effects(), &EffectUnits::LockToBeat, kind, quarters);
}

}  // namespace app
