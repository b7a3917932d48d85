// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "app/sound/DeckStation.h"
#include "decks/BeatSync.h"

namespace app {

/// Which of the two mixing decks follows the other one's beat.
///
/// Law: never both at once. A follower goes its own way again when another file comes onto it, or when the
/// tempos come to lie too far apart. What follows for a mix glides: a tempo that jumps is heard. Threads: the
/// conductor.
class BeatMatch {
 public:
  static constexpr int kMatched = 2;  ///< decks 1 and 2

  [[nodiscard]] static bool Matches(int deck) { return deck == 1 || deck == 2; }
  [[nodiscard]] static int LeaderOf(int deck) { return 3 - deck; }

  /// False when the tempos are unknown or too far apart; the follower then stays as it is.
  bool Start(DeckStation& follower, DeckStation& leader, SyncStart start, int most_percent);
  void Stop(DeckStation& follower);
  /// For a mix: a deck that stands ready takes the leader's tempo, for as long as both sound; then it glides
  /// back to its own. Gives the place of the leader, near the one that is wished, where it is to begin so
  /// that the beats lie on each other; nothing when the tempos are unknown or too far apart.
  [[nodiscard]] std::optional<music::Seconds> StartForMix(DeckStation& follower, DeckStation& leader,
                                                          music::Seconds place, int most_percent);
  /// There is no mix: a deck that still stands ready has its own tempo again.
  void CancelMix(DeckStation& follower);
  /// One step of the conductor's. 0, or the percentage whose limit the tempos have left: then it has stopped.
  [[nodiscard]] int Tick(DeckStation& follower, DeckStation& leader);
  void Show(int deck, DeckView& view) const;

 private:
  struct Follower {
    bool on = false;
    bool for_mix = false;
    bool mixed = false;  ///< both have sounded
    decks::BeatSync sync;
    int own_track = 0;
    int led_track = 0;
    int most_percent = 0;
    music::Seconds from{0};  ///< where it stands ready for the mix
    int resting = 0;         ///< ticks until a jump is heard
    double error = 0;
  };

  [[nodiscard]] Follower& Of(const DeckStation& deck) {
    return followers_[static_cast<std::size_t>(deck.Player().Channel() - 1)];
  }
  void Jump(DeckStation& deck, music::Seconds late);
  [[nodiscard]] bool MixIsOver(Follower& one, const DeckStation& follower, const DeckStation& leader) const;
  static void PrepareAnew(DeckStation& deck);
  void GlideBack(DeckStation& deck);

  std::array<Follower, kMatched> followers_;
  std::array<int, kMatched> steps_{};  ///< ticks on the way back since the newest step
};

}  // namespace app
