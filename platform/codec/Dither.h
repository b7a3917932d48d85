// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace platform::codec {

/// Makes whole numbers of samples whose full scale is 1.
///
/// 16 bits get noise of triangular density, two steps wide, so that quiet sound fades away instead of
/// breaking up; the same on every run. Threads: one.
class Dither {
 public:
  [[nodiscard]] std::int16_t To16(float sample) {
    const float noise = Uniform() + Uniform() - 1;
    return static_cast<std::int16_t>(
        std::clamp(std::nearbyint(sample * 32768.0F + noise), -32768.0F, 32767.0F));
  }
  /// Within 24 bits.
  [[nodiscard]] static std::int32_t To24(float sample) {
    return static_cast<std::int32_t>(
        std::clamp(std::nearbyint(sample * 8388608.0F), -8388608.0F, 8388607.0F));
  }

 private:
  /// 0 to 1.
  float Uniform() {
    state_ = state_ * 1664525U + 1013904223U;
    return static_cast<float>(state_ >> 8) / 16777216.0F;
  }
  std::uint32_t state_ = 1;
};

}  // namespace platform::codec
