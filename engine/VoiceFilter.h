// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "music/PeakingFilter.h"

namespace engine {

/// One second-order filter on one side.
///
/// Law: flat and settled, it passes every sample bit for bit; a change glides over 5 ms; both ends are
/// stable, and so is every filter between them (the region of stable denominators is convex). Threads: the
/// callback.
class VoiceFilter {
 public:
  explicit VoiceFilter(int sample_rate);

  void Set(const music::Biquad& target) noexcept;
  void Process(std::span<float> mono) noexcept;
  /// The sound before the next block has nothing to do with it.
  void Reset() noexcept;

 private:
  void Glide() noexcept;
  void Remember(std::span<const float> mono) noexcept;

  const int glide_frames_;
  music::Biquad now_, target_, step_{0, 0, 0, 0, 0};
  int glide_left_ = 0;
  double x1_ = 0, x2_ = 0, y1_ = 0, y2_ = 0;
};

}  // namespace engine
