// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace engine {

/// A control's value on its straight way to where it was set.
class RampedValue {
 public:
  explicit RampedValue(float value) : value_(value), target_(value) {}
  /// 0 frames are a jump.
  void Set(float target, int frames) noexcept {
    target_ = target;
    left_ = frames;
    if (frames <= 0) value_ = target;
    step_ = frames <= 0 ? 0 : (target - value_) / static_cast<float>(frames);
  }
  [[nodiscard]] float Target() const noexcept { return target_; }
  [[nodiscard]] bool RestsAt(float value) const noexcept { return left_ <= 0 && value_ == value; }
  void Arrive() noexcept { Set(target_, 0); }
  [[nodiscard]] float Next() noexcept {
    if (left_ > 0) value_ = --left_ == 0 ? target_ : value_ + step_;
    return value_;
  }

 private:
  float value_;
  float target_;
  float step_ = 0;
  int left_ = 0;
};

}  // namespace engine
