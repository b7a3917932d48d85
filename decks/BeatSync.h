// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "music/BeatGrid.h"

namespace decks {

/// One of two decks that are to beat together, at one instant.
struct BeatSide {
  const music::BeatGrid* grid = nullptr;  ///< null or empty where only the tempo is known
  double bpm = 0;                         ///< of the file as it was recorded
  music::Seconds heard{0};                ///< the place in the file at the loudspeaker
  double speed = 1;                       ///< source seconds a second, as it was ordered last
  double bend = 1;                        ///< the part of that which soon passes
  bool playing = false;
  double most_bend = 0.04;  ///< of its tempo; less where the key goes with it
};

/// Holds a deck in the beat of another one by what is heard of both.
///
/// Two devices run by two clocks, so tempos that are set equal drift apart. The error between the two beats
/// is smoothed and turned into a small bend of the follower's tempo: slow enough for the time from an order
/// to its being heard, never more than the follower's most_bend, and a jump only where one is asked for.
/// Threads: one at a time; no clock of its own.
class BeatSync {
 public:
  struct Step {
    double speed = 1;         ///< the follower's, without the bend
    double bend = 1;          ///< factor on it
    music::Seconds error{0};  ///< by which the follower's beat comes late; 0 where that is not known
  };

  /// Takes the multiple of the leader's tempo, once, twice or half, that lies nearest to the follower's own.
  /// False when even that is further than most_percent away, or a tempo is unknown.
  [[nodiscard]] bool Begin(const BeatSide& leader, const BeatSide& follower, double most_percent);
  /// after: since the last step. Nothing when the tempos have come to lie too far apart.
  [[nodiscard]] std::optional<Step> Next(const BeatSide& leader, const BeatSide& follower,
                                         music::Seconds after);
  /// How late the follower's beat is now; nothing while one of the two stands still or has no beats.
  [[nodiscard]] std::optional<music::Seconds> Error(const BeatSide& leader, const BeatSide& follower) const;
  /// The beats as they lie now are what is held from now on.
  void Rebase(const BeatSide& leader, const BeatSide& follower);
  /// The follower was put somewhere else.
  void Restart() { smooth_.reset(); }

 private:
  /// In beats of the follower, half a beat away at most.
  [[nodiscard]] std::optional<double> BeatsLate(const BeatSide& leader, const BeatSide& follower) const;
  [[nodiscard]] double SpeedFor(const BeatSide& leader, const BeatSide& follower) const;

  double multiple_ = 1;  ///< follower's beats to one of the leader's
  double most_percent_ = 0;
  double offset_ = 0;  ///< held on purpose, in beats
  std::optional<music::Seconds> smooth_;
};

}  // namespace decks
