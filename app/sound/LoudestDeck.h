// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "app/WorkstationView.h"
#include "decks/ports/AudioEngine.h"

namespace app {

/// Finds the loudest audible deck of 1 to 3 and listens to it.
///
/// Law: it stays with a deck until another one is clearly louder, so that two decks of the same loudness are
/// not shown by turns. Threads: the conductor, once a tick.
class LoudestDeck {
 public:
  static constexpr int kListened = 3;  ///< deck 4 is in the head-phones alone

  explicit LoudestDeck(decks::AudioEngine& engine) : engine_(engine) {}

  /// streams: of decks 1 to 3, with the view of the same tick.
  [[nodiscard]] HeardSound Listen(const std::array<DeckView, kDecks>& decks,
                                  const std::array<decks::StreamHandle, kListened>& streams);

 private:
  void Choose(const std::array<DeckView, kDecks>& decks);

  decks::AudioEngine& engine_;
  std::array<float, kListened> loudness_{-60, -60, -60};  ///< in dB, behind the fader; falls slowly
  int deck_ = 0;
};

}  // namespace app
