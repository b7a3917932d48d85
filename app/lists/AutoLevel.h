// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>

#include "app/lists/AutoMix.h"
#include "app/lists/MixPlan.h"
#include "app/sound/DeckView.h"
#include "support/Clock.h"

namespace app {

struct WorkstationView;

/// Brings the tracks of decks 1 and 2 and of the catalogue's pre-listen to one loudness, by a gain of their
/// own, whether the automatic mixer is on or not.
///
/// Law: a track that nobody hears yet takes its gain at once, one that has just begun quickly, and one that
/// plays so slowly that nobody notices. Its faders stay where the hands have put them. Threads: the
/// conductor.
class AutoLevel {
 public:
  AutoLevel(MixingDecks& decks, const support::Clock& clock) : decks_(decks), clock_(clock) {}

  void Choose(const MixWishes& wishes) { wishes_ = wishes; }
  void Tick(const WorkstationView& view);

 private:
  struct Heard {
    std::string file;
    support::TimePoint since{};
  };
  void Level(int deck, const DeckView& view, double seconds);

  MixingDecks& decks_;
  const support::Clock& clock_;
  MixWishes wishes_;
  support::TimePoint ticked_{};
  std::array<Heard, kDecks> heard_;
};

}  // namespace app
