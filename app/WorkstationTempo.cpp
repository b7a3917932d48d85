// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of Workstation on tempo and beats.

#include <algorithm>
#include <string>
#include <utility>

#include "app/WorkstationParts.h"
#include "support/Text.h"

namespace app {
namespace {

constexpr int kStoredDecks = 2;

bool IsDeck(int deck) {
  return deck >= 1 && deck <= kDecks;
}

std::string Section(int deck) {
  return "Player" + std::to_string(deck);
}

std::string_view ValueOf(const StoredSection& section, std::string_view key) {
  const auto found =
      std::find_if(section.begin(), section.end(), [key](const auto& pair) { return pair.first == key; });
  return found == section.end() ? std::string_view() : std::string_view(found->second);
}

double RealOf(const StoredSection& section, std::string_view key) {
  return support::ParseReal(support::Trim(ValueOf(section, key))).value_or(0);
}

int RangeOf(const StoredSection& section) {
  const auto range = support::LeadingInteger(ValueOf(section, "TempoRange"));
  return std::find(kTempoRanges.begin(), kTempoRanges.end(), range) == kTempoRanges.end()
             ? kTempoRange
             : static_cast<int>(range);
}

decks::TempoSliders SlidersOf(const StoredSection& section) {
  const bool locked = support::EqualsIgnoringCase(support::Trim(ValueOf(section, "KeyLock")), "True");
  return {.key_lock = locked ? decks::KeyLock::On : decks::KeyLock::Off,
          .percent = RealOf(section, "PitchTempo"),
          .semitones = RealOf(section, "PitchScaling"),
          .sample_percent = RealOf(section, "PitchSample")};
}

}  // namespace

void Workstation::Parts::StoredTempos() {
  for (int deck = 1; deck <= kStoredDecks; ++deck) {
    const StoredSection& section = preferences.decks[static_cast<std::size_t>(deck - 1)].effects;
    conductor.Post([this, deck, sliders = SlidersOf(section), range = RangeOf(section)] {
      stage.Deck(deck).Tempo().Set(sliders);
      stage.Deck(deck).Tempo().Range(range);
    });
  }
  const bool low = settings.Flag("Settings", "LowPowerStretch");
  conductor.Post(
      [this, low] { ports.sound.SetStretch(low ? decks::Stretch::LowPower : decks::Stretch::Best); });
}

void Workstation::Parts::MoveTempo(int deck, double decks::TempoSliders::*slider, std::string_view key,
                                   double value) {
  if (!IsDeck(deck)) return;
  decks::TempoSliders one;
  one.*slider = value;
  const double playable = decks::Playable(one).*slider;
  if (deck <= kStoredDecks) settings.SetText(Section(deck), key, support::FormatReal(playable, 3));
  conductor.Post([this, deck, slider, playable] {
    decks::TempoSliders sliders = stage.Deck(deck).Tempo().Sliders();
    sliders.*slider = playable;
    stage.Deck(deck).Tempo().Set(sliders);
  });
}

void Workstation::SetTempo(int deck, float percent) {
  Unsync(deck);
  parts_->MoveTempo(deck, &decks::TempoSliders::percent, "PitchTempo", percent);
}

void Workstation::SetPitch(int deck, float semitones) {
  parts_->MoveTempo(deck, &decks::TempoSliders::semitones, "PitchScaling", semitones);
}

void Workstation::SetSampleRate(int deck, float percent) {
  parts_->MoveTempo(deck, &decks::TempoSliders::sample_percent, "PitchSample", percent);
}

void Workstation::SetKeyLock(int deck, decks::KeyLock lock) {
  if (!IsDeck(deck)) return;
  if (deck <= kStoredDecks) parts_->settings.SetFlag(Section(deck), "KeyLock", lock == decks::KeyLock::On);
  parts_->conductor.Post([&stage = parts_->stage, deck, lock] {
    decks::TempoSliders sliders = stage.Deck(deck).Tempo().Sliders();
    sliders.key_lock = lock;
    stage.Deck(deck).Tempo().Set(sliders);
  });
}

void Workstation::SetTempoRange(int deck, int percent) {
  const bool known = std::find(kTempoRanges.begin(), kTempoRanges.end(), percent) != kTempoRanges.end();
  if (!IsDeck(deck) || !known) return;
  if (deck <= kStoredDecks) parts_->settings.SetNumber(Section(deck), "TempoRange", percent);
  parts_->conductor.Post(
      [&stage = parts_->stage, deck, percent] { stage.Deck(deck).Tempo().Range(percent); });
}

void Workstation::SetStretch(decks::Stretch choice) {
  parts_->settings.SetFlag("Settings", "LowPowerStretch", choice == decks::Stretch::LowPower);
  parts_->conductor.Post([&sound = parts_->ports.sound, choice] { sound.SetStretch(choice); });
}

void Workstation::Nudge(int deck, float percent) {
  parts_->OnTempo(deck, [percent](DeckTempo& tempo) { tempo.Nudge(1 + static_cast<double>(percent) / 100); });
}

void Workstation::Tap(int deck) {
  const support::TimePoint now = parts_->ports.clock.Now();
  parts_->OnTempo(deck, [now](DeckTempo& tempo) { tempo.Tap(now); });
}

void Workstation::ScaleBpm(int deck, music::BeatScale scale) {
  parts_->OnTempo(deck, [scale](DeckTempo& tempo) { tempo.Scale(scale); });
}

void Workstation::ShiftGrid(int deck, std::chrono::microseconds time) {
  parts_->OnTempo(deck, [time](DeckTempo& tempo) { tempo.Shift(time); });
}

void Workstation::AlignGrid(int deck) {
  parts_->OnTempo(deck, [](DeckTempo& tempo) { tempo.Align(); });
}

void Workstation::ForgetGrid(int deck) {
  if (!IsDeck(deck)) return;
  parts_->conductor.Post([&stage = parts_->stage, deck] { stage.Deck(deck).ForgetGrid(); });
}

void Workstation::Parts::OnTempo(int deck, std::function<void(DeckTempo&)> command) {
  if (!IsDeck(deck)) return;
  conductor.Post([this, deck, command = std::move(command)] { command(stage.Deck(deck).Tempo()); });
}

void Workstation::Sync(int deck, SyncStart start) {
  const int most = std::clamp(parts_->settings.Number("Settings", "BPMPercent"), 0, 50);
  parts_->conductor.Post([&stage = parts_->stage, deck, start, most] { stage.Sync(deck, start, most); });
}

void Workstation::Unsync(int deck) {
  parts_->conductor.Post([&stage = parts_->stage, deck] { stage.Unsync(deck); });
}

}  // namespace app
