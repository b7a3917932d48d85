// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <span>

namespace engine {

/// How high stereo sound rises between its samples: four values a frame, as ITU-R BS.1770-4 annex 2 asks.
///
/// Between two frames it reads what a band-limited converter would put out; at the edge of the band it may
/// still miss 0.7 dB. Threads: one; takes no memory.
class TruePeak {
 public:
  /// Of one of the three values between two frames.
  static constexpr int kTaps = 24;
  /// Frames by which the reading comes late.
  static constexpr int kDelay = kTaps / 2;
  static constexpr int kMostFrames = 128;

  void Reset() noexcept;
  /// peaks[i] becomes the higher side's height from frame i - kDelay on until short of the next one. Where
  /// nothing can be above `above` they may read 0, which costs next to nothing.
  /// Requires: two samples a frame, at most kMostFrames, as many peaks as frames.
  void Read(std::span<const float> stereo, std::span<float> peaks, float above) noexcept;

 private:
  static constexpr int kHistory = kTaps - 1;
  using Side = std::array<float, kHistory + kMostFrames>;

  static void Measure(const Side& side, std::span<float> peaks) noexcept;

  std::array<Side, 2> sides_{};  ///< the last frames before, then the new ones
};

}  // namespace engine
