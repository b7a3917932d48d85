// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/HeardMusic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace app {

using lightorgan::Bins;
using lightorgan::Channels;

void HeardMusic::Look(const WorkstationView* decks) {
  decks_ = decks;
  sides_.reset();
}

std::optional<Bins> HeardMusic::Spectrum(Channels channels) {
  if (Deck() == 0) return std::nullopt;
  if (channels == Channels::Mixed) return decks_->sound.spectrum;
  if (!sides_) TakeSides();
  return channels == Channels::Left ? sides_->left : sides_->right;
}

void HeardMusic::TakeSides() {
  std::array<float, 2 * music::kSpectrumBins> by_turns{};
  sound_.engine.BASS_ChannelGetData(sound_.stream(Deck()), std::span<float>(by_turns),
                                    decks::kDataFft256 | decks::kDataFftIndividual);
  Sides sides;
  for (std::size_t bin = 0; bin < music::kSpectrumBins; ++bin) {
    sides.left[bin] = by_turns[2 * bin];
    sides.right[bin] = by_turns[2 * bin + 1];
  }
  sides_ = sides;
}

bool HeardMusic::AnyPlaying() {
  const auto plays = [](const DeckView& deck) { return deck.state == DeckView::State::Playing; };
  return decks_ != nullptr && std::any_of(decks_->decks.begin(), decks_->decks.end(), plays);
}

std::optional<lightorgan::HeardBeat> HeardMusic::LastBeat(std::chrono::microseconds ahead) {
  if (Deck() == 0) return std::nullopt;
  const DeckView& deck = decks_->decks[static_cast<std::size_t>(Deck() - 1)];
  if (deck.grid == nullptr || deck.grid->Empty()) return std::nullopt;
  const double speed = deck.bpm > 0 && deck.playing_bpm > 0 ? deck.playing_bpm / deck.bpm : 1;
  const music::Seconds place = music::Seconds(deck.position) + music::Seconds(ahead) * speed;
  return lightorgan::HeardBeat{Deck(), static_cast<std::int64_t>(std::floor(deck.grid->BeatAt(place)))};
}

}  // namespace app
