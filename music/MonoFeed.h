// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace music {

/// Makes one channel at a lower rate of a track that comes piece by piece, for finders that need no more: the
/// channels' mean, every nth sample of it behind a low pass.
class MonoFeed {
 public:
  /// The rate that is aimed at; what comes out has this one or up to twice as much.
  static constexpr int kTargetRate = 22'050;

  /// Requires: both above 0.
  MonoFeed(int sample_rate, int channels);
  [[nodiscard]] double OutputRate() const;
  /// Whole frames, interleaved; what comes out is valid until the next call. 1 is full scale.
  [[nodiscard]] std::span<const float> Take(std::span<const std::int16_t> samples);

 private:
  const int sample_rate_;
  const std::size_t channels_;
  const std::size_t factor_;
  std::vector<float> filter_;  ///< symmetric about the sample that it gives
  std::vector<float> line_;    ///< mono, at the full rate; its front is what was not used up
  std::vector<float> out_;
};

}  // namespace music
