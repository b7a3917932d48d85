// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "music/BeatGrid.h"

namespace decks {

/// What was heard of the beats of a track.
struct TrackedBeats {
  std::vector<music::Seconds> beats;  ///< rising; as good as the tracker's steps
  /// How suddenly the sound changes, never negative: value i belongs to onset_start + i * onset_step.
  std::vector<float> onsets;
  music::Seconds onset_start{0};
  music::Seconds onset_step{0};
};

/// Follows the beats of one track while its samples come piece by piece. Threads: one at a time.
class BeatTracker {
 public:
  virtual ~BeatTracker() = default;
  /// One channel, 1 is full scale, in pieces of any size.
  virtual void Add(std::span<const float> samples) = 0;
  /// Of all that was added; nothing is added after that.
  [[nodiscard]] virtual TrackedBeats Finish() = 0;
};

/// Threads: any.
class BeatTrackers {
 public:
  virtual ~BeatTrackers() = default;
  /// For samples of a rate between kLowestRate and kHighestRate; null outside.
  [[nodiscard]] virtual std::unique_ptr<BeatTracker> Make(double sample_rate) = 0;

  static constexpr double kLowestRate = 4000;
  static constexpr double kHighestRate = 50'000;
};

}  // namespace decks
