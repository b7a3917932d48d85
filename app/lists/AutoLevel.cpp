// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/AutoLevel.h"

#include <algorithm>
#include <chrono>

#include "app/WorkstationView.h"
#include "music/Loudness.h"

namespace app {

void AutoLevel::Tick(const WorkstationView& view) {
  using Seconds = std::chrono::duration<double>;
  constexpr double kLongestStep = 0.1;
  const double seconds = std::min(Seconds(clock_.Now() - ticked_).count(), kLongestStep);
  ticked_ = clock_.Now();
  for (const int deck : {1, 2, 4}) Level(deck, view.decks[static_cast<std::size_t>(deck - 1)], seconds);
}

void AutoLevel::Level(int deck, const DeckView& view, double seconds) {
  using namespace std::chrono_literals;
  constexpr auto kBeginning = 3s;
  constexpr double kQuick = 30, kUnnoticed = 1;  // dB a second
  Heard& heard = heard_[static_cast<std::size_t>(deck - 1)];
  const bool sounds = view.state == DeckView::State::Playing;
  if (!sounds) {
    heard.file.clear();
  } else if (heard.file != view.filename) {
    heard = {view.filename, clock_.Now()};
  }
  const bool on_deck = view.state != DeckView::State::Loading && view.state != DeckView::State::Empty;
  if (!wishes_.match_gain || !on_deck || !view.loudness.valid) return;
  const float wanted = music::LevelFor(view.loudness, wishes_.gain_range).value;
  if (view.gain.value == wanted) return;
  if (!sounds) return decks_.SetGain(deck, {wanted});
  const bool begins = clock_.Now() - heard.since < kBeginning;
  const auto step = static_cast<float>(seconds * (begins ? kQuick : kUnnoticed));
  decks_.SetGain(deck, {view.gain.value + std::clamp(wanted - view.gain.value, -step, step)});
}

}  // namespace app
