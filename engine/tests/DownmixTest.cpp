// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Downmix.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace engine::testing {
namespace {

struct Sides {
  float left;
  float right;
};

/// One frame in which a single channel is at full scale below zero.
Sides Mixed(int channels, int loud) {
  std::vector<std::int16_t> frame(static_cast<std::size_t>(channels));
  frame[static_cast<std::size_t>(loud)] = -32768;
  std::array<float, 1> left{};
  std::array<float, 1> right{};
  Downmix(frame, channels, left, right);
  return {left[0], right[0]};
}

TEST(DownmixTo, StereoLeavesTwoChannelsAsTheyAre) {
  EXPECT_EQ(Mixed(2, 0).left, -1);
  EXPECT_EQ(Mixed(2, 0).right, 0);
  EXPECT_EQ(Mixed(2, 1).right, -1);
}

TEST(DownmixTo, StereoPutsOneChannelOnBothSides) {
  EXPECT_EQ(Mixed(1, 0).left, -1);
  EXPECT_EQ(Mixed(1, 0).right, -1);
}

TEST(DownmixTo, StereoLeavesTheLowFrequencyChannelOut) {
  for (const int channels : {6, 7, 8}) {
    EXPECT_EQ(Mixed(channels, 3).left, 0) << channels;
    EXPECT_EQ(Mixed(channels, 3).right, 0) << channels;
  }
}

TEST(DownmixTo, StereoKeepsSidesApartAndTheCentreInTheMiddle) {
  EXPECT_LT(Mixed(6, 4).left, 0);
  EXPECT_EQ(Mixed(6, 4).right, 0);
  EXPECT_EQ(Mixed(6, 2).left, Mixed(6, 2).right);
  EXPECT_EQ(Mixed(8, 7).left, 0);
  EXPECT_LT(Mixed(8, 7).right, 0);
}

TEST(DownmixTo, StereoNeverPassesFullScale) {
  for (int channels = 1; channels <= 8; ++channels) {
    const std::vector<std::int16_t> loudest(static_cast<std::size_t>(channels), -32768);
    std::array<float, 1> left{};
    std::array<float, 1> right{};
    Downmix(loudest, channels, left, right);
    EXPECT_GE(left[0], -1.000001F) << channels;
    EXPECT_GE(right[0], -1.000001F) << channels;
    EXPECT_LT(left[0], -0.99F) << channels;
  }
}

}  // namespace
}  // namespace engine::testing
