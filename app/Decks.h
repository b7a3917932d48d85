// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cassert>

#include "app/Deck.h"
#include "decks/ports/SoundControl.h"

namespace app {

struct Preferences;

/// The four decks in the window's hands, and what is set for all of them. Threads: as Deck.
class Decks {
 public:
  Decks(const Deck::Around& around, decks::SoundControl& sound);

  /// Requires: 1 to kDecks.
  [[nodiscard]] app::Deck& operator[](int number) {
    assert(number >= 1 && number <= kDecks && "there are four decks");
    return decks_[static_cast<std::size_t>(number - 1)];
  }
  /// The threshold of the mix points, 0 to 100, stored; those of the files on the decks are looked for again.
  void SetGainPercent(int percent);
  /// What stretches the main outputs' sound from now on, stored; also while music plays.
  void SetStretch(decks::Stretch choice);
  /// As it was stored.
  void StartUp(const Preferences& stored);

 private:
  Deck::Around around_;
  decks::SoundControl& sound_;
  std::array<Deck, kDecks> decks_;
};

}  // namespace app
