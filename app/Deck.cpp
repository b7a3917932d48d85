// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Deck.h"

#include <algorithm>
#include <utility>

#include "app/Collections.h"
#include "app/DeckRack.h"
#include "app/StationContext.h"
#include "app/resume/ResumeStation.h"
#include "app/sound/TrackToLoad.h"
#include "support/Settings.h"
#include "support/Text.h"

namespace app {
namespace {

double RealOf(const StoredSection& section, std::string_view key) {
  return support::ParseReal(support::Trim(ValueOf(section, key))).value_or(0);
}

std::string_view KeyOf(ToneBand band) {
  return band == ToneBand::High ? "High" : band == ToneBand::Mid ? "Mid" : "Bass";
}

bool IsTempoRange(std::int64_t percent) {
  return std::find(kTempoRanges.begin(), kTempoRanges.end(), percent) != kTempoRanges.end();
}

int RangeOf(const StoredSection& section) {
  const auto range = support::LeadingInteger(ValueOf(section, "TempoRange"));
  return IsTempoRange(range) ? static_cast<int>(range) : kTempoRange;
}

decks::TempoSliders SlidersOf(const StoredSection& section) {
  const bool locked = support::EqualsIgnoringCase(support::Trim(ValueOf(section, "KeyLock")), "True");
  return {.key_lock = locked ? decks::KeyLock::On : decks::KeyLock::Off,
          .percent = RealOf(section, "PitchTempo"),
          .semitones = RealOf(section, "PitchScaling"),
          .sample_percent = RealOf(section, "PitchSample")};
}

}  // namespace

const DeckView& Deck::View() const {
  return around_.rack.View().decks[static_cast<std::size_t>(number_ - 1)];
}

void Deck::Post(std::function<void(DeckStation&)> command) {
  around_.context.conductor->Post(
      [&deck = around_.rack.Deck(number_), command = std::move(command)] { command(deck); });
}

void Deck::ByHand(std::function<void(DeckStation&)> command) {
  Post([&resume = around_.resume, number = number_, command = std::move(command)](DeckStation& deck) {
    resume.HandOn(number);
    command(deck);
  });
}

void Deck::PostTempo(std::function<void(DeckTempo&)> command) {
  Post([command = std::move(command)](DeckStation& deck) { command(deck.Tempo()); });
}

void Deck::PostCues(std::function<void(DeckCues&)> command) {
  Post([command = std::move(command)](DeckStation& deck) { command(deck.Cues()); });
}

void Deck::CuesByHand(std::function<void(DeckCues&)> command) {
  ByHand([command = std::move(command)](DeckStation& deck) { command(deck.Cues()); });
}

void Deck::SetQuantise(bool on) {
  around_.settings.SetFlag("Decks", "Quantise", on);
  for (const int number : {1, 2}) {
    around_.context.conductor->Post([&deck = around_.rack.Deck(number), on] { deck.Cues().Quantise(on); });
  }
}

void Deck::PostTone(std::function<void(DeckTone&)> command) {
  Post([command = std::move(command)](DeckStation& deck) { command(deck.Tone()); });
}

void Deck::SetTone(ToneBand band, int decibels) {
  const int gain = std::clamp(decibels, kLeastTone, kMostTone);
  if (IsStored()) around_.settings.SetNumber("Eq" + std::to_string(number_), KeyOf(band), gain);
  PostTone([band, gain](DeckTone& tone) { tone.Set(band, gain); });
}

void Deck::Kill(ToneBand band, bool killed) {
  PostTone([band, killed](DeckTone& tone) { tone.Kill(band, killed); });
}

void Deck::SetTrim(int slider) {
  const int trim = std::clamp(slider, 0, 100);
  if (IsStored()) around_.settings.SetNumber(Section(), "Gain", trim);
  PostTone([trim](DeckTone& tone) { tone.Trim(trim); });
}

void Deck::RestoreTone(const StoredSection& effects, const StoredSection& equaliser) {
  const auto trim = support::ParseInteger(support::Trim(ValueOf(effects, "Gain")));
  PostTone([trim = trim ? static_cast<int>(std::clamp<std::int64_t>(*trim, 0, 100))
                        : kMiddleTrim](DeckTone& tone) { tone.Trim(trim); });
  for (const ToneBand band : {ToneBand::High, ToneBand::Mid, ToneBand::Bass}) {
    const auto stored = support::LeadingInteger(ValueOf(equaliser, KeyOf(band)));
    const int gain = static_cast<int>(std::clamp<std::int64_t>(stored, kLeastTone, kMostTone));
    PostTone([band, gain](DeckTone& tone) { tone.Set(band, gain); });
  }
}

std::string Deck::Section() const {
  return "Player" + std::to_string(number_);
}

void Deck::Load(const catalogue::track_table& table, int row) {
  const auto wanted = TrackToLoad(table, row);
  if (wanted) Load(*wanted);
}

void Deck::Load(const Track& track) {
  around_.collections.Missing().LookAt(track.filename);
  Do(&DeckStation::Load, track);
}

void Deck::Restore(const StoredSection& section) {
  Adjust(&DeckTempo::Set, SlidersOf(section));
  Adjust(&DeckTempo::Range, RangeOf(section));
}

void Deck::MoveTempo(double decks::TempoSliders::*slider, std::string_view key, double value) {
  decks::TempoSliders one;
  one.*slider = value;
  const double playable = decks::Playable(one).*slider;
  if (IsStored()) around_.settings.SetText(Section(), key, support::FormatReal(playable, 3));
  PostTempo([slider, playable](DeckTempo& tempo) {
    decks::TempoSliders sliders = tempo.Sliders();
    sliders.*slider = playable;
    tempo.Set(sliders);
  });
}

void Deck::SetTempo(float percent) {
  Unsync();
  MoveTempo(&decks::TempoSliders::percent, "PitchTempo", percent);
}

void Deck::SetPitch(float semitones) {
  MoveTempo(&decks::TempoSliders::semitones, "PitchScaling", semitones);
}

void Deck::SetSampleRate(float percent) {
  MoveTempo(&decks::TempoSliders::sample_percent, "PitchSample", percent);
}

void Deck::SetKeyLock(decks::KeyLock lock) {
  if (IsStored()) around_.settings.SetFlag(Section(), "KeyLock", lock == decks::KeyLock::On);
  PostTempo([lock](DeckTempo& tempo) {
    decks::TempoSliders sliders = tempo.Sliders();
    sliders.key_lock = lock;
    tempo.Set(sliders);
  });
}

void Deck::SetTempoRange(int percent) {
  if (!IsTempoRange(percent)) return;
  if (IsStored()) around_.settings.SetNumber(Section(), "TempoRange", percent);
  Adjust(&DeckTempo::Range, percent);
}

void Deck::Nudge(float percent) {
  Adjust(&DeckTempo::Nudge, 1 + static_cast<double>(percent) / 100);
}

void Deck::Tap() {
  Adjust(&DeckTempo::Tap, around_.context.clock.Now());
}

void Deck::Sync(SyncStart start) {
  const int most = std::clamp(around_.settings.Number("Settings", "BPMPercent"), 0, 50);
  around_.context.conductor->Order(around_.rack, &DeckRack::Sync, number_, start, most);
}

void Deck::Unsync() {
  around_.context.conductor->Order(around_.rack, &DeckRack::Unsync, number_);
}

void Deck::SetMixPoint(MixPoint which, std::chrono::microseconds place) {
  const DeckView& view = View();
  if (view.state == DeckView::State::Empty || view.state == DeckView::State::Loading) return;
  place = std::clamp(place, std::chrono::microseconds(0), std::max(view.length, {}));
  Adjust(&DeckStation::SetMixPoint, which, place);
  around_.collections.StoreMixPoint(view.filename, which, place);
}

void Deck::ResetMixPoint(MixPoint which) {
  const DeckView& view = View();
  const auto found = view.found.Of(which);
  if (!found) return;
  Adjust(&DeckStation::SetMixPoint, which, std::nullopt);
  around_.collections.StoreMixPoint(view.filename, which, *found);
}

void Deck::QueryGain(const GainQueries::Done& done) {
  const std::string& filename = View().filename;
  if (!filename.empty()) around_.gains.Ask(filename, done);
}

}  // namespace app
