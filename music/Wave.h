// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace music {

/// What one column of a drawn wave stands for: the extremes of its samples and how loud three bands are in
/// it.
struct WaveColumn {
  std::int8_t lowest = 0;  ///< -127 to 127 is full scale
  std::int8_t highest = 0;
  std::uint8_t low = 0;   ///< below 200 Hz; root mean square, 255 is full scale
  std::uint8_t mid = 0;   ///< up to 2500 Hz
  std::uint8_t high = 0;  ///< above
  bool operator==(const WaveColumn&) const = default;
};

/// A whole track for drawing, coarse and fine. All channels are taken together.
struct Wave {
  static constexpr int kColumnsASecond = 150;
  static constexpr int kOverviewColumns = 1500;

  /// The track from its start to its end; fewer columns where the track is shorter than ten seconds.
  std::vector<WaveColumn> overview;
  /// Column i begins at i / kColumnsASecond seconds.
  std::vector<WaveColumn> fine;

  /// The wave whose fine columns these are.
  [[nodiscard]] static Wave Of(std::vector<WaveColumn> fine);
};

/// Makes a wave of samples that come piece by piece.
class WaveBuilder {
 public:
  /// Requires: both above 0.
  WaveBuilder(int sample_rate, int channels);
  /// Whole frames, interleaved.
  void Add(std::span<const std::int16_t> samples);
  /// Of what was added so far; the overview is as wide as if the track had so many seconds in all.
  [[nodiscard]] Wave SoFar(double expected_seconds) const;
  /// Nothing is added after that.
  [[nodiscard]] Wave Finish();

 private:
  void AddFrame(std::span<const std::int16_t> frame);
  void EndColumn();

  int sample_rate_;
  std::size_t channels_;
  float low_share_;   ///< of a new sample in the low filter
  float high_share_;  ///< of a new sample in the filter at the upper edge
  float low_ = 0;
  float low_and_mid_ = 0;
  std::int64_t frames_ = 0;
  std::int64_t column_end_;
  int lowest_ = 0;
  int highest_ = 0;
  float low_power_ = 0, mid_power_ = 0, high_power_ = 0;
  int in_column_ = 0;
  std::vector<WaveColumn> columns_;
};

}  // namespace music
