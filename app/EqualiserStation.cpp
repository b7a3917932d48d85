// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/EqualiserStation.h"

#include <algorithm>
#include <utility>

#include "app/DeckRack.h"
#include "app/StationContext.h"
#include "app/settings/Preferences.h"
#include "support/Settings.h"
#include "support/Text.h"

namespace app {
namespace {

std::size_t FirstSlider(decks::EqBank bank) {
  return bank == decks::EqBank::First ? 0 : decks::kEqBands;
}

const char* ChoiceKey(decks::EqBank bank) {
  return bank == decks::EqBank::First ? "Preset1" : "Preset2";
}

/// The twenty sliders Eq out of the sections of both banks.
std::array<int, decks::kEqSliders> StoredSliders(const Preferences& preferences) {
  std::array<int, decks::kEqSliders> sliders{};
  for (std::size_t bank = 0; bank < preferences.decks.size(); ++bank) {
    for (const auto& [key, value] : preferences.decks[bank].equaliser) {
      const auto place = support::ParseInteger(key);  // "High", "Mid" and "Bass" are none of the twenty
      if (!place || *place < 0 || *place >= decks::kEqBands) continue;
      const auto gain = std::clamp<std::int64_t>(support::LeadingInteger(value), -kMostEqGain, kMostEqGain);
      sliders[bank * decks::kEqBands + static_cast<std::size_t>(*place)] = static_cast<int>(gain);
    }
  }
  return sliders;
}

}  // namespace

EqualiserStation::EqualiserStation(const StationContext& context, DeckRack& rack, support::Settings& settings)
    : context_(context),
      rack_(rack),
      settings_(settings),
      presets_(context.files, context.folder, context.workers, context.gate, context.window, context.say) {}

void EqualiserStation::StartUp(const Preferences& stored) {
  sliders_ = StoredSliders(stored);
  context_.conductor->Order(rack_, &DeckRack::StoredEqualiser, sliders_);
}

void EqualiserStation::ReadPresets() {
  presets_.Read([tell = context_.tell](const support::Result<void>& read) {
    if (!read) tell(SayingOf(read.Failure()));
  });
}

void EqualiserStation::Set(int slider, int decibels) {
  if (slider < 0 || slider >= decks::kEqSliders) return;
  const int gain = std::clamp(decibels, -kMostEqGain, kMostEqGain);
  sliders_[static_cast<std::size_t>(slider)] = gain;
  const bool first = slider < decks::kEqBands;
  settings_.SetNumber(first ? "Eq1" : "Eq2", std::to_string(slider % decks::kEqBands), gain);
  context_.conductor->Order(rack_, &DeckRack::SetEqualiser, slider, gain);
}

void EqualiserStation::Resend() {
  for (int slider = 0; slider < decks::kEqSliders; ++slider) {
    context_.conductor->Order(rack_, &DeckRack::SetEqualiser, slider,
                              sliders_[static_cast<std::size_t>(slider)]);
  }
}

std::string EqualiserStation::Chosen(decks::EqBank bank) const {
  return settings_.Text("EQ", ChoiceKey(bank));
}

void EqualiserStation::Apply(decks::EqBank bank, const std::string& name) {
  const auto preset = std::find_if(Presets().begin(), Presets().end(),
                                   [&](const decks::EqPreset& one) { return one.name == name; });
  if (preset == Presets().end()) return;
  decks::ApplyEqPreset(bank, *preset, settings_, [this](int slider, int decibels) { Set(slider, decibels); });
}

void EqualiserStation::Save(decks::EqBank bank, const std::string& name, PresetKeeper::Done done) {
  decks::EqValues values{};
  std::copy_n(sliders_.begin() + static_cast<std::ptrdiff_t>(FirstSlider(bank)), values.size(),
              values.begin());
  // The sliders stand there already, so the new preset is chosen without sending anything to the decks.
  const auto choose = [this, bank, name, done = std::move(done)](const support::Result<void>& saved) {
    if (saved) settings_.SetText("EQ", ChoiceKey(bank), name);
    if (done) done(saved);
  };
  presets_.Save(name, values, choose);
}

void EqualiserStation::Delete(const std::string& name, PresetKeeper::Done done) {
  presets_.Delete(name, std::move(done));
}

}  // namespace app
