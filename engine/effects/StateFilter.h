// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

#include "engine/BothSides.h"
#include "engine/effects/Fade.h"

namespace engine {

/// A state-variable filter of the second order that may be swept at any speed.
///
/// V. Zavalishin, "The Art of VA Filter Design": trapezoidal, so it stays stable while edge and Q move. Both
/// move in octaves, and its numbers are reckoned anew every 16 frames. Threads: the callback.
class StateFilter {
 public:
  struct Outputs {
    BothSides low, high;
  };

  explicit StateFilter(int sample_rate)
      : sample_rate_(sample_rate), octave_(std::log2(1000.0F), sample_rate), q_(0, sample_rate) {}

  void Aim(float hertz, float q) noexcept {
    octave_.Aim(std::log2(hertz));
    q_.Aim(std::log2(q));
  }
  void JumpTo(float hertz, float q) noexcept {
    octave_.JumpTo(std::log2(hertz));
    q_.JumpTo(std::log2(q));
    until_shape_ = 0;
  }
  void Clear() noexcept { s1_ = s2_ = BothSides{}; }

  [[nodiscard]] Outputs Step(const BothSides& in) noexcept {
    const float octave = octave_.Next(), q = q_.Next();
    if (--until_shape_ < 0) Shape(octave, q);
    const BothSides v3 = in - s2_;
    const BothSides v1 = a1_ * s1_ + a2_ * v3;
    const BothSides v2 = s2_ + a2_ * s1_ + a3_ * v3;
    s1_ = 2.0 * v1 - s1_;
    s2_ = 2.0 * v2 - s2_;
    return {v2, in - k_ * v1 - v2};
  }

 private:
  void Shape(float octave, float q) noexcept {
    constexpr int kHold = 16;
    until_shape_ = kHold - 1;
    if (octave == shaped_octave_ && q == shaped_q_) return;
    shaped_octave_ = octave;
    shaped_q_ = q;
    const double share = std::exp2(static_cast<double>(octave)) / sample_rate_;
    const double g = std::tan(std::numbers::pi * std::min(share, 0.48));
    k_ = std::exp2(-static_cast<double>(q));
    a1_ = 1 / (1 + g * (g + k_));
    a2_ = g * a1_;
    a3_ = g * a2_;
  }

  int sample_rate_;
  Smoothed octave_;
  Smoothed q_;
  float shaped_octave_ = -1;
  float shaped_q_ = -1;
  int until_shape_ = 0;
  double k_ = 1, a1_ = 0, a2_ = 0, a3_ = 0;
  BothSides s1_{}, s2_{};
};

}  // namespace engine
