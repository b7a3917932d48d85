// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/RackDecks.h"

#include <utility>

#include "app/DeckRack.h"
#include "app/sound/TrackToLoad.h"

namespace app {

void RackDecks::Load(int deck, const catalogue::track_table& playlist, int row) {
  if (auto track = TrackToLoad(playlist, row)) rack_.Deck(deck).Load(std::move(*track));
}

void RackDecks::Seek(int deck, std::chrono::microseconds place) {
  rack_.Deck(deck).Seek(place);
}

void RackDecks::Play(int deck) {
  rack_.Deck(deck).Play();
}

void RackDecks::Pause(int deck) {
  rack_.Deck(deck).Pause();
}

void RackDecks::Stop(int deck) {
  rack_.Deck(deck).Stop();
}

void RackDecks::SetVolume(int deck, int volume) {
  rack_.Deck(deck).SetVolume(volume);
}

void RackDecks::Glide(int deck, double level, std::chrono::milliseconds time) {
  rack_.Deck(deck).Glide(level, time);
}

void RackDecks::SetMixing(int deck, bool mixing) {
  rack_.Deck(deck).SetMixing(mixing);
}

bool RackDecks::StartWith(int deck, int other, std::chrono::microseconds place) {
  return rack_.Deck(deck).StartWith(rack_.Deck(other), place);
}

bool RackDecks::Started(int deck) {
  return rack_.Deck(deck).Started();
}

void RackDecks::CancelStart(int deck) {
  rack_.Deck(deck).CancelStart();
  rack_.CancelMix(deck);
}

std::chrono::microseconds RackDecks::MatchTempo(int deck, std::chrono::microseconds place, int most_percent) {
  return rack_.MatchForMix(deck, place, most_percent);
}

void RackDecks::SetGain(int deck, support::Decibels gain) {
  rack_.Deck(deck).SetGain(gain);
}

}  // namespace app
