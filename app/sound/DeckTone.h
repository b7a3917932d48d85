// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "app/sound/DeckView.h"
#include "decks/clsBassPlayer.h"
#include "decks/ports/SoundControl.h"
#include "decks/ports/SoundDesk.h"

namespace app {

/// The trim as it is stored and turned: 0 to 100, 50 is 0 dB.
[[nodiscard]] support::Decibels TrimOf(int slider);

/// A deck's own channel of the desk: trim, three bands that can be killed, and the gain of its track.
///
/// Law: what a hand turned holds for every file that comes onto the deck; the track's gain goes with it. The
/// head-phones hear the same. Threads: the conductor.
class DeckTone {
 public:
  /// desk: null where the engine has none.
  DeckTone(decks::SoundControl& sound, decks::SoundDesk* desk, const decks::clsBassPlayer& player)
      : sound_(sound), desk_(desk), player_(player) {}

  /// In dB, kLeastTone to kMostTone.
  void Set(ToneBand band, int decibels);
  /// Takes the band out; where it was turned to comes back with it.
  void Kill(ToneBand band, bool killed);
  /// As it is stored.
  void Trim(int slider);
  /// On top of the trim, of this file.
  void SetGain(support::Decibels gain);
  /// Another file comes.
  void Begin() { gain_ = {}; }
  /// The streams are new ones.
  void Apply();
  void Show(DeckView& view) const;
  /// What both gains add to the levels.
  [[nodiscard]] support::Decibels Gain() const { return {gain_.value + TrimOf(trim_).value}; }

 private:
  void ApplyTone();

  decks::SoundControl& sound_;
  decks::SoundDesk* desk_;
  const decks::clsBassPlayer& player_;
  support::Decibels gain_;
  int trim_ = kMiddleTrim;
  std::array<int, kToneBands> bands_{};
  std::array<bool, kToneBands> killed_{};
};

}  // namespace app
