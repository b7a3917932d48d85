// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "engine/BothSides.h"

namespace engine {

/// The newest stretch of a stereo sound, as it was written, and whether anything is left in it.
/// Threads: the callback; made by the owner, and takes no memory afterwards.
class DelayLine {
 public:
  /// most: frames that can be read back.
  explicit DelayLine(int most) {
    std::size_t size = 1;
    while (size < static_cast<std::size_t>(most) + 1) size *= 2;
    left_.resize(size);
    right_.resize(size);
  }

  void Write(const BothSides& sound) noexcept {
    constexpr double kInaudible = 1e-5;  // -100 dB
    const std::size_t at = written_++ & (left_.size() - 1);
    left_[at] = static_cast<float>(sound[0]);
    right_[at] = static_cast<float>(sound[1]);
    const bool quiet = std::abs(sound[0]) < kInaudible && std::abs(sound[1]) < kInaudible;
    quiet_ = quiet ? quiet_ + 1 : 0;
  }
  /// Requires: 1 <= back <= most. 1 is the newest frame.
  [[nodiscard]] BothSides Read(int back) const noexcept {
    const std::size_t at = (written_ - static_cast<std::size_t>(back)) & (left_.size() - 1);
    return BothOf(left_[at], right_[at]);
  }
  /// Between two frames, on the straight line.
  [[nodiscard]] BothSides ReadBetween(double back) const noexcept {
    const int whole = static_cast<int>(back);
    const BothSides near = Read(whole);
    return near + (back - whole) * (Read(whole + 1) - near);
  }
  /// Nothing that was written within so many frames can be heard.
  [[nodiscard]] bool QuietFor(int frames) const noexcept {
    return quiet_ >= std::min(static_cast<std::size_t>(frames), left_.size());
  }
  void Clear() noexcept {
    std::fill(left_.begin(), left_.end(), 0.0F);
    std::fill(right_.begin(), right_.end(), 0.0F);
    quiet_ = left_.size();
  }

 private:
  std::vector<float> left_, right_;
  std::size_t written_ = 0;
  std::size_t quiet_ = 1U << 30U;
};

}  // namespace engine
