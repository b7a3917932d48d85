// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "support/Units.h"

namespace music {

/// The highest level that a track reaches between its samples, by ITU-R BS.1770: the samples of each channel
/// are interpolated to four times the rate, from 96 kHz on to twice, from 192 kHz on not at all.
///
/// Law: a block that cannot pass the peak so far, because its loudest sample times the largest gain of the
/// interpolation does not, is not interpolated.
class TruePeak {
 public:
  /// Requires: both above 0.
  TruePeak(int sample_rate, int channels);
  /// Whole frames, interleaved.
  void Add(std::span<const std::int16_t> samples);
  /// Of what was added so far and the silence after it. Full scale is 0; silence is -120.
  [[nodiscard]] support::Decibels Finish();

 private:
  static constexpr std::size_t kTaps = 12;    ///< of each of the interpolated places
  static constexpr std::size_t kBlock = 128;  ///< samples of one channel
  /// What the next block's first outputs need of this one stands before it.
  using Line = std::array<float, kTaps + kBlock>;

  void Block(std::span<const std::int16_t> samples, std::size_t frames);
  void Interpolate(const Line& line, std::size_t frames);

  const std::size_t channels_;
  std::vector<std::array<float, kTaps>> places_;  ///< filters for the places between two samples
  float largest_gain_ = 1;
  std::vector<Line> lines_;  ///< one a channel
  std::vector<std::int16_t> rest_;
  float peak_ = 0;  ///< 32768 is full scale
};

}  // namespace music
