// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <vector>

#include "engine/ports/Stretcher.h"

namespace platform::stretch {

/// A windowed sinc around every output frame, 64 source frames wide, wider where the source runs faster.
///
/// Ours because the libraries' resamplers of variable ratio use the heap while they run, shift the sound by a
/// frame or two, and switch filters where the ratio passes 1 and 2; this one does none of it. Heap: in the
/// constructor only. Measured beside a sine: 100 dB clean, flat to 20 kHz at 44.1 kHz within 0.2 dB.
class SincResampler : public engine::Resampler {
 public:
  explicit SincResampler(double ratio);

  void SetRatio(double ratio) override;
  void Reset() override;
  Progress Process(std::span<const float> left_in, std::span<const float> right_in, std::span<float> left_out,
                   std::span<float> right_out) override;

 private:
  static constexpr int kHalf = 32;    ///< source frames on either side at ratios up to 1
  static constexpr int kWidest = 20;  ///< times that, at the highest ratios
  static constexpr int kCapacity = 4096;

  void MakeRoom();
  /// The weights of the source frames around the present position.
  void WeighAround(double fraction);

  double ratio_ = 1;
  double width_ = 1;   ///< the kernel's stretch: the ratio, where it is above 1
  int reach_ = kHalf;  ///< frames on either side at the present ratio
  /// Source frames wait here, in each channel at the same place; the first source frame after a Reset has the
  /// widest kernel's half of silence before it.
  std::array<std::vector<float>, 2> waiting_;
  int filled_ = 0;
  int at_ = 0;           ///< the source frame at or before the next output frame
  double fraction_ = 0;  ///< how far behind it the output frame lies, 0 to 1
  std::vector<float> weights_;
};

}  // namespace platform::stretch
