// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/HeardMusic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <span>

namespace app {

using lightorgan::Bins;
using lightorgan::Channels;

namespace {

/// Where in which beats.
struct Followed {
  std::chrono::microseconds position;
  double speed;
  const music::BeatGrid* grid;
};

/// Requires: something is heard.
Followed FollowedIn(const WorkstationView& decks) {
  if (decks.sound.from == HeardFrom::Song) {
    return {decks.song.position, decks.song.speed, decks.song.grid.get()};
  }
  const DeckView& deck = decks.decks[static_cast<std::size_t>(DeckOf(decks.sound.from) - 1)];
  const double speed = deck.bpm > 0 && deck.playing_bpm > 0 ? deck.playing_bpm / deck.bpm : 1;
  return {deck.position, speed, deck.grid.get()};
}

}  // namespace

void HeardMusic::Look(const WorkstationView* decks) {
  decks_ = decks;
  sides_.reset();
}

std::optional<Bins> HeardMusic::Spectrum(Channels channels) {
  if (From() == HeardFrom::Nothing) return std::nullopt;
  if (channels == Channels::Mixed) return decks_->sound.spectrum;
  if (!sides_) TakeSides();
  return channels == Channels::Left ? sides_->left : sides_->right;
}

void HeardMusic::TakeSides() {
  std::array<float, 2 * music::kSpectrumBins> by_turns{};
  sound_.engine.BASS_ChannelGetData(sound_.stream(From()), std::span<float>(by_turns),
                                    decks::kDataFft256 | decks::kDataFftIndividual);
  Sides sides;
  for (std::size_t bin = 0; bin < music::kSpectrumBins; ++bin) {
    sides.left[bin] = by_turns[2 * bin];
    sides.right[bin] = by_turns[2 * bin + 1];
  }
  sides_ = sides;
}

bool HeardMusic::AnyPlaying() {
  const auto plays = [](const DeckView& deck) { return deck.loaded_state == DeckView::State::Playing; };
  if (decks_ == nullptr) return false;
  return decks_->song.playing || std::any_of(decks_->decks.begin(), decks_->decks.end(), plays);
}

std::optional<lightorgan::HeardBeat> HeardMusic::LastBeat(std::chrono::microseconds ahead) {
  if (From() == HeardFrom::Nothing) return std::nullopt;
  const Followed heard = FollowedIn(*decks_);
  if (heard.grid == nullptr || heard.grid->Empty()) return std::nullopt;
  const music::Seconds place = music::Seconds(heard.position) + music::Seconds(ahead) * heard.speed;
  auto number = static_cast<std::int64_t>(std::floor(heard.grid->BeatAt(place)));
  // A song's last notes ring on behind its beats.
  if (From() == HeardFrom::Song) number = std::min(number, std::ssize(heard.grid->Beats()) - 1);
  return lightorgan::HeardBeat{static_cast<int>(From()), number};
}

double HeardTempo(const WorkstationView& decks) {
  if (decks.sound.from != HeardFrom::Song) {
    const int deck = DeckOf(decks.sound.from);
    return deck == 0 ? 0 : decks.decks[static_cast<std::size_t>(deck - 1)].playing_bpm;
  }
  const Followed song = FollowedIn(decks);
  if (song.grid == nullptr || song.grid->Empty()) return 0;
  return song.grid->TempoAt(music::Seconds(song.position)).value * song.speed;
}

std::optional<HeardBeats> HeardBeatsOf(const WorkstationView& decks) {
  if (decks.sound.from == HeardFrom::Nothing) return std::nullopt;
  const Followed heard = FollowedIn(decks);
  if (heard.grid == nullptr || heard.grid->Empty()) return std::nullopt;
  const music::Seconds place(heard.position);
  return HeardBeats{heard.grid->BeatAt(place), heard.grid->TempoAt(place).value * heard.speed};
}

}  // namespace app
