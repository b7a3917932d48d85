// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "music/BeatGrid.h"
#include "music/SpectrumFeed.h"
#include "music/TrackForm.h"

namespace decks {

/// How loud bands of a track are, beat by beat, as natural logarithms of their power.
inline constexpr std::size_t kFormBands = 20;
using BeatSound = std::array<float, kFormBands>;

/// Hears where the bars of a track begin and of which parts it is made, while its samples come piece by
/// piece; the beats may be known later. Keeps half a kilobyte a second. Threads: one at a time.
class FormFinder {
 public:
  /// Requires: above 0.
  explicit FormFinder(double sample_rate);
  /// One channel, 1 is full scale.
  void Add(std::span<const float> samples);
  /// Of one beat after the other, as far as was heard.
  [[nodiscard]] std::vector<BeatSound> BeatsOn(const music::BeatGrid& grid) const;

 private:
  void AddFrame(std::span<const float> power);

  music::SpectrumFeed feed_;
  const double step_seconds_, middle_seconds_;  ///< between frames, and to the middle of the first
  std::array<std::size_t, kFormBands + 1> edges_{};
  std::vector<std::array<std::uint8_t, kFormBands>> frames_;  ///< in half decibels
};

/// Which of four beats begins a bar.
struct BarPhase {
  int beat = 0;           ///< 0 to 3, of the grid
  double confidence = 0;  ///< 0 to 1
};
/// What is not so sure is not claimed.
inline constexpr double kSureOfBars = 0.6;
/// Nothing of less than a dozen bars.
[[nodiscard]] std::optional<BarPhase> FindBars(std::span<const BeatSound> beats);

/// The parts of a track whose bars begin on this beat and each fourth one after it. None where nothing
/// sets them off.
[[nodiscard]] std::vector<music::Section> FindSections(std::span<const BeatSound> beats, int first_beat,
                                                       const music::BeatGrid& grid, music::Seconds length);

}  // namespace decks
