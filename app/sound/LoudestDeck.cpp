// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/LoudestDeck.h"

#include <algorithm>
#include <cmath>

namespace app {
namespace {

constexpr float kInaudible = -60;    // dB
constexpr float kFallATick = 0.2F;   // dB, so that a beat is remembered until the next one
constexpr float kClearlyLouder = 3;  // dB

/// In dB, behind the fader.
float LoudnessOf(const DeckView& deck) {
  if (deck.state != DeckView::State::Playing || deck.volume <= 0) return kInaudible;
  const float fader = 20 * std::log10(static_cast<float>(deck.volume) / 100);
  return std::max(kInaudible, std::max(deck.left_db, deck.right_db) + fader);
}

}  // namespace

void LoudestDeck::Choose(const std::array<DeckView, kDecks>& decks) {
  int loudest = 0;
  for (int i = 0; i < kListened; ++i) {
    const auto place = static_cast<std::size_t>(i);
    const float now = LoudnessOf(decks[place]);
    const bool plays = decks[place].state == DeckView::State::Playing && decks[place].volume > 0;
    loudness_[place] = plays ? std::max(now, loudness_[place] - kFallATick) : kInaudible;
    if (loudness_[place] > loudness_[static_cast<std::size_t>(loudest)]) loudest = i;
  }
  const float most = loudness_[static_cast<std::size_t>(loudest)];
  const float present = deck_ == 0 ? kInaudible : loudness_[static_cast<std::size_t>(deck_ - 1)];
  if (most <= kInaudible) {
    deck_ = 0;
  } else if (present <= kInaudible || most > present + kClearlyLouder) {
    deck_ = loudest + 1;
  }
}

HeardSound LoudestDeck::Listen(const std::array<DeckView, kDecks>& decks,
                               const std::array<decks::StreamHandle, kListened>& streams) {
  Choose(decks);
  HeardSound sound;
  sound.deck = deck_;
  if (deck_ == 0) return sound;
  const decks::StreamHandle stream = streams[static_cast<std::size_t>(deck_ - 1)];
  engine_.BASS_ChannelGetData(stream, std::span<float>(sound.spectrum), decks::kDataFft256);
  std::array<float, 2 * std::tuple_size_v<decltype(sound.samples)>> stereo{};
  engine_.BASS_ChannelGetData(stream, std::span<float>(stereo), decks::kDataFloat | sizeof(stereo));
  for (std::size_t i = 0; i < sound.samples.size(); ++i) {
    sound.samples[i] = (stereo[2 * i] + stereo[2 * i + 1]) / 2;
  }
  return sound;
}

}  // namespace app
