// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <string>
#include <unordered_set>

#include "app/sound/DeckView.h"
#include "catalogue/track_table.h"
#include "support/Units.h"

namespace app {

/// How the automatic mixer goes about it; the user's choice.
struct MixWishes {
  bool on = false;
  std::chrono::milliseconds mix_time{8000};
  bool at_mix_points = true;
  bool match_tempo = false;
  int most_percent = 0;  ///< that the tempos may lie apart
  bool match_gain = false;
  support::Decibels gain_range{12};  ///< that tracks are levelled by at most
  bool operator==(const MixWishes&) const = default;
};

/// When a deck hands over to the other one.
struct MixPlan {
  std::chrono::microseconds at{0};    ///< place in its file where the other one begins
  std::chrono::microseconds fade{0};  ///< how long the crossfader takes; 0: there is nothing left to fade
  bool operator==(const MixPlan&) const = default;
};

/// What a stretch of a file lasts as it plays.
[[nodiscard]] std::chrono::microseconds Lasting(std::chrono::microseconds stretch, double speed);

/// At its end mix point, then the fade takes what sound is left, up to the mix time; without mix points the
/// fade ends with the file. A deck that is past that place hands over at its end.
[[nodiscard]] MixPlan PlanMix(const DeckView& playing, const MixWishes& wishes);

/// The first row from this one on (from 1) whose file is in neither set; 0 when there is none.
using Files = std::unordered_set<std::string>;
[[nodiscard]] int NextRow(const catalogue::track_table& playlist, const Files& played,
                          const Files& passed_over);

/// Where the crossfader stands after a share (0 to 1) of its way to a deck's end: -100 is deck 1's.
[[nodiscard]] int CrossfaderAt(int from, int to_deck, double share);
/// The same between its steps.
[[nodiscard]] double PlaceOfFade(int from, int to_deck, double share);

}  // namespace app
