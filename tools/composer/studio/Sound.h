// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tools::composer {

inline constexpr int kRate = 44100;

/// Two channels of floats of the same length; 1 is full scale.
struct Stereo {
  std::vector<float> left, right;

  explicit Stereo(std::size_t frames = 0) : left(frames), right(frames) {}
  [[nodiscard]] std::size_t Frames() const { return left.size(); }
};

/// A generator of our own, so that the tracks are the same on every machine.
class Random {
 public:
  explicit Random(std::uint32_t seed) : state_(seed | 1U) {}
  /// -1 to 1.
  float Next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return static_cast<float>(state_ >> 8) / static_cast<float>(1 << 23) - 1.0F;
  }

 private:
  std::uint32_t state_;
};

/// Low, band and high pass of the second order that may be tuned while it runs.
class Filter {
 public:
  void Tune(double cutoff_hz, double resonance);
  void Feed(float in);
  [[nodiscard]] float Low() const { return low_; }
  [[nodiscard]] float Band() const { return band_; }
  [[nodiscard]] float High() const { return high_; }

 private:
  double g_ = 0.1, k_ = 1, a1_ = 1, a2_ = 0, a3_ = 0;
  double s1_ = 0, s2_ = 0;
  float low_ = 0, band_ = 0, high_ = 0;
};

}  // namespace tools::composer
