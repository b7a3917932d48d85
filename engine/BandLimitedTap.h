// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <vector>

namespace engine {

/// Reads between the samples of a sound, at any pace: a sinc under a Kaiser window, out of a table
/// (J. O. Smith, "Digital Audio Resampling Home Page", ccrma.stanford.edu/~jos/resample).
///
/// What the slower of the two rates cannot hold is cut off, so that 192 kHz brings no whistling into 44.1
/// kHz. Threads: one; memory is taken at construction only.
class BandLimitedTap {
 public:
  /// Frames of the source on each side that a reading needs, at most.
  static constexpr int kMostReach = 220;

  BandLimitedTap();
  /// pace: frames of the source a frame read.
  void SetPace(double pace) noexcept;
  /// How many frames of the source a reading needs on each side.
  [[nodiscard]] int Reach() const noexcept { return reach_; }
  /// The value at a place between the frames Reach() - 1 and Reach() of the source. between: 0 to 1.
  /// stride: from a frame to the next. Requires: 2 * Reach() frames.
  [[nodiscard]] float At(const float* source, std::ptrdiff_t stride, double between) const noexcept;

 private:
  static constexpr int kCrossings = 8;
  static constexpr int kSteps = 256;  ///< of the table, from one crossing to the next

  std::vector<float> table_;  ///< half of it: the other is the same; then nothing
  double edge_ = 1;           ///< crossings a frame of the source
  int reach_ = kCrossings;
};

}  // namespace engine
