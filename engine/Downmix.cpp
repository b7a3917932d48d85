// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Downmix.h"

#include <array>

namespace engine {
namespace {

struct Share {
  float left;
  float right;
};

constexpr float kHalfPower = 0.70710678F;
constexpr Share kLeft{1, 0};
constexpr Share kRight{0, 1};
constexpr Share kBoth{kHalfPower, kHalfPower};
constexpr Share kLeftBehind{kHalfPower, 0};
constexpr Share kRightBehind{0, kHalfPower};
constexpr Share kNone{0, 0};

/// Of files with 3 to 8 channels, in the order front, centre, LFE, rear, side; each leaves out what it lacks.
constexpr std::array<std::array<Share, 8>, 6> kShares{{
    {kLeft, kRight, kBoth},
    {kLeft, kRight, kLeftBehind, kRightBehind},
    {kLeft, kRight, kBoth, kLeftBehind, kRightBehind},
    {kLeft, kRight, kBoth, kNone, kLeftBehind, kRightBehind},
    {kLeft, kRight, kBoth, kNone, kBoth, kLeftBehind, kRightBehind},
    {kLeft, kRight, kBoth, kNone, kLeftBehind, kRightBehind, kLeftBehind, kRightBehind},
}};

}  // namespace

void Downmix(std::span<const std::int16_t> interleaved, int channels, std::span<float> left,
             std::span<float> right) noexcept {
  constexpr float kScale = 1.0F / 32768.0F;
  const std::int16_t* in = interleaved.data();
  if (channels <= 2) {
    const int second = channels - 1;
    for (std::size_t i = 0; i < left.size(); ++i, in += channels) {
      left[i] = static_cast<float>(in[0]) * kScale;
      right[i] = static_cast<float>(in[second]) * kScale;
    }
    return;
  }
  const auto& shares = kShares[static_cast<std::size_t>(channels - 3)];
  float sum = 0;
  for (const Share& share : shares) sum += share.left;
  for (std::size_t i = 0; i < left.size(); ++i, in += channels) {
    float l = 0;
    float r = 0;
    for (int c = 0; c < channels; ++c) {
      l += shares[static_cast<std::size_t>(c)].left * static_cast<float>(in[c]);
      r += shares[static_cast<std::size_t>(c)].right * static_cast<float>(in[c]);
    }
    left[i] = l * kScale / sum;
    right[i] = r * kScale / sum;
  }
}

}  // namespace engine
