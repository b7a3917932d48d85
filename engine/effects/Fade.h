// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

#include "engine/RampedValue.h"

namespace engine {

/// A parameter on its way to where it was set, over 20 ms.
class Smoothed {
 public:
  Smoothed(float value, int sample_rate) : value_(value), frames_(std::max(1, sample_rate / 50)) {}
  void Aim(float target) noexcept {
    if (target != value_.Target()) value_.Set(target, frames_);
  }
  void JumpTo(float value) noexcept { value_.Set(value, 0); }
  [[nodiscard]] float Target() const noexcept { return value_.Target(); }
  [[nodiscard]] bool RestsAt(float value) const noexcept { return value_.RestsAt(value); }
  [[nodiscard]] float Next() noexcept { return value_.Next(); }

 private:
  RampedValue value_;
  int frames_;
};

/// How much of an effect is heard, from 0 to 1 in 10 ms.
class OnOff {
 public:
  explicit OnOff(int sample_rate) : frames_(std::max(1, sample_rate / 100)) {}
  void Aim(bool on) noexcept {
    const float target = on ? 1.0F : 0.0F;
    if (target != value_.Target()) value_.Set(target, frames_);
  }
  void Arrive() noexcept { value_.Arrive(); }
  [[nodiscard]] bool Nothing() const noexcept { return value_.RestsAt(0); }
  [[nodiscard]] bool All() const noexcept { return value_.RestsAt(1); }
  [[nodiscard]] float Next() noexcept { return value_.Next(); }

 private:
  RampedValue value_{0};
  int frames_;
};

}  // namespace engine
