// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <span>

#include "lightorgan/Outputs.h"
#include "lightorgan/ports/Music.h"

namespace lightorgan {

/// First bins of the bands, and one past the last: band k holds bins edges[k] up to edges[k + 1] - 1. Bin 0,
/// the direct current, is in none. Edges grow as 128^(k / bands), at least by one, so no bin is in two bands.
[[nodiscard]] std::array<int, kMostOutputs + 1> BandEdges(int bands);

/// Mean magnitude of every band; bins that are no finite number count as 0. Requires: at most kMostOutputs.
void GatherBands(const Bins& bins, std::span<float> bands);

/// What of the bins cannot be the window's leakage of a louder one, and is not the noise below every song;
/// the rest, and what is no finite number, is 0. Without it a gain of its own would light each band from a
/// pure tone in another one.
[[nodiscard]] Bins WithoutLeakage(const Bins& bins);

/// Bands of the running sound as levels from 0 to 1 that use the whole range, whatever the loudness.
///
/// Law: each band has its own gain, which follows the band's loudest within seconds and never rises more than
/// 30 dB above what it was over the last minute; below the silence gate levels fall to 0 and gains stand.
/// A level rises within 15 ms and falls within 200 ms in the bass to 120 ms in the treble. It depends on
/// elapsed time alone, not on how often it is called. Threads: one.
class BandFollower {
 public:
  explicit BandFollower(int bands) : bands_(bands) {}

  /// elapsed: since the last call. The result is valid until the next one.
  std::span<const float> Follow(const Bins& bins, std::chrono::microseconds elapsed);
  /// Nothing plays: levels fall, gains stand.
  std::span<const float> Fall(std::chrono::microseconds elapsed);
  [[nodiscard]] int Bands() const { return bands_; }

 private:
  struct Band {
    float loudest = 0;    ///< within seconds
    float long_term = 0;  ///< within a minute
  };
  void Approach(std::span<const float> targets, float seconds);

  int bands_;
  std::array<Band, kMostOutputs> gains_{};
  std::array<float, kMostOutputs> levels_{};
};

/// A switched output behind a level: on above the threshold, off below two thirds of it, and neither for less
/// than 80 ms, so that relays live. Threads: one.
class LevelSwitch {
 public:
  static constexpr std::chrono::milliseconds kShortest{80};

  /// threshold: 0 to 1; at 1 it never goes on.
  bool Update(float level, float threshold, std::chrono::microseconds elapsed);
  [[nodiscard]] bool On() const { return on_; }

 private:
  bool on_ = false;
  std::chrono::microseconds since_{std::chrono::hours(1)};
};

/// Value of an analogue output, 0 to full, so that an LED dimmer looks evenly graded: full * level^2.2.
[[nodiscard]] int DimmerValue(float level, int full);

}  // namespace lightorgan
