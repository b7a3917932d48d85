// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/resume/DecksGoOn.h"

#include <utility>

#include "app/WorkstationView.h"

namespace app {
namespace {

using Wanted = DeckInHand::State;

constexpr std::chrono::seconds kNear{1};
constexpr std::chrono::seconds kReaches{3};  ///< its place, or never does

std::size_t At(int deck) {
  return static_cast<std::size_t>(deck - 1);
}

}  // namespace

DecksGoOn::DecksGoOn(DeckRack& rack, const support::Clock& clock, Lost lost)
    : rack_(rack), clock_(clock), lost_(std::move(lost)) {}

void DecksGoOn::Begin(const Decks& decks) {
  wanted_ = decks;
  begun_ = clock_.Now();
  for (const int deck : {1, 2}) {
    if (!hands_[At(deck)]) Set(deck, wanted_[At(deck)]);
  }
}

void DecksGoOn::Set(int deck, const DeckInHand& wanted) {
  DeckStation& station = rack_.Deck(deck);
  station.Tempo().Set(wanted.sliders);
  station.SetVolume(wanted.volume);
  if (wanted.state == Wanted::Empty) return;
  steps_[At(deck)] = Step::Loading;
  station.Load({wanted.filename, wanted.artist, wanted.title, wanted.bpm, wanted.marks});
}

void DecksGoOn::HandOn(int deck) {
  if (deck < 1 || deck > static_cast<int>(steps_.size())) return;
  hands_[At(deck)] = true;
  steps_[At(deck)] = Step::Done;
}

void DecksGoOn::Tick(const WorkstationView& view) {
  for (const int deck : {1, 2}) {
    if (Pending(deck)) Look(deck, view.decks[At(deck)]);
  }
}

void DecksGoOn::Look(int deck, const DeckView& view) {
  const DeckInHand& wanted = wanted_[At(deck)];
  Step& step = steps_[At(deck)];
  if (step == Step::Beginning) {
    // What is heard follows a seek a moment later: until then the place is the one that is wanted.
    const bool there = !view.waiting && view.position + kNear >= wanted.position;
    if (there || clock_.Now() - taken_up_[At(deck)] > kReaches) step = Step::Done;
    return;
  }
  if (view.state == DeckView::State::Loading) {
    if (clock_.Now() - begun_ > kPatience) Lose(deck, view);
    return;
  }
  if (view.state != DeckView::State::Stopped || view.filename != wanted.filename) return Lose(deck, view);
  step = Step::Beginning;
  taken_up_[At(deck)] = clock_.Now();
  TakeUp(deck, wanted);
}

void DecksGoOn::TakeUp(int deck, const DeckInHand& wanted) {
  DeckStation& station = rack_.Deck(deck);
  station.SetGain(wanted.gain);
  station.SetEqualiser(wanted.equaliser);
  station.Seek(wanted.position);
  if (wanted.state == Wanted::Standing) return;
  station.Play();
  station.SetPreVolume(wanted.pre_volume);
  if (wanted.state == Wanted::Paused) return station.Pause();
}

void DecksGoOn::Lose(int deck, const DeckView& view) {
  const DeckInHand& wanted = wanted_[At(deck)];
  steps_[At(deck)] = Step::Done;
  lost_one_ = lost_one_ || wanted.state == Wanted::Playing;
  if (!view.message.empty()) lost_(wanted.title.empty() ? wanted.filename : wanted.title, view.message);
}

}  // namespace app
