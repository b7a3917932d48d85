// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

#include "support/Units.h"

namespace music {

/// A time in a track, from its first sample.
using Seconds = std::chrono::duration<double>;

/// How a grid is corrected by hand when it was found at another level of the metre.
enum class BeatScale { Double, Half, TwoThirds, ThreeHalves };

/// Where the beats of a track lie.
///
/// Beats are numbered from 0, the first of the grid; between two of them the number grows evenly, and before
/// the first and after the last it goes on at the pace of the first and the last interval. A grid never
/// changes: each correction gives a new one. Every function takes any time, also of an empty grid (no beats
/// known), whose answers are 0 or what was given.
class BeatGrid {
 public:
  BeatGrid() = default;
  /// Beats that are out of order, or closer than kShortestBeat to the one before, are left out, and fewer
  /// than two are none. A nominal tempo of 0 is taken from the beats.
  BeatGrid(support::Bpm nominal, double confidence, std::vector<Seconds> beats);
  /// Evenly spaced beats from the first one at or after 0 up to the length, one of them at the anchor.
  [[nodiscard]] static BeatGrid Even(support::Bpm tempo, double confidence, Seconds anchor, Seconds length);

  static constexpr Seconds kShortestBeat{0.1};

  [[nodiscard]] bool Empty() const { return beats_.empty(); }
  /// The tempo to be shown: of the track as a whole.
  [[nodiscard]] support::Bpm Nominal() const { return nominal_; }
  /// How sure the finder is of the tempo, 0 to 1; 1 for what a hand set.
  [[nodiscard]] double Confidence() const { return confidence_; }
  [[nodiscard]] const std::vector<Seconds>& Beats() const { return beats_; }

  /// The number of the beat at a time, with its fraction: 4.25 is a quarter of the way from beat 4 to beat 5.
  [[nodiscard]] double BeatAt(Seconds time) const;
  /// The time of a beat by its number, whole or not; BeatAt the other way round.
  [[nodiscard]] Seconds TimeOf(double beat) const;
  /// How far the time is into its beat: 0 to below 1.
  [[nodiscard]] double PhaseAt(Seconds time) const;
  /// The first beat after the time.
  [[nodiscard]] Seconds NextBeat(Seconds time) const;
  [[nodiscard]] Seconds NearestBeat(Seconds time) const;
  /// Of the beat that the time lies in.
  [[nodiscard]] support::Bpm TempoAt(Seconds time) const;

  /// The first beat stays where it is.
  [[nodiscard]] BeatGrid ScaledBy(BeatScale scale) const;
  /// Later by the time, or earlier where it is negative.
  [[nodiscard]] BeatGrid ShiftedBy(Seconds time) const;
  /// Even beats over the same stretch at a tempo that was tapped, through the present beat that is nearest to
  /// the anchor (the anchor itself where the grid is empty). Confidence 1.
  [[nodiscard]] BeatGrid RetimedTo(support::Bpm tempo, Seconds anchor, Seconds length) const;

  bool operator==(const BeatGrid&) const = default;

 private:
  /// The interval that a beat number lies in; the first or the last one beyond the ends.
  [[nodiscard]] std::size_t IntervalOf(Seconds time) const;
  [[nodiscard]] Seconds Width(std::size_t interval) const { return beats_[interval + 1] - beats_[interval]; }

  support::Bpm nominal_;
  double confidence_ = 0;
  std::vector<Seconds> beats_;  // none, or at least two, rising
};

}  // namespace music
