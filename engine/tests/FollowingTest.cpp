// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Following.h"

#include <gtest/gtest.h>

#include <random>

namespace engine {
namespace {

TEST(Bend, SettlesOnTheDifferenceOfTwoClocksThatAreToldUnevenly) {
  constexpr double kDifference = 200e-6;
  constexpr double kEvery = 0.02;
  std::mt19937 random(1);
  std::normal_distribution<double> unevenly(0, 0.001);
  Following following;
  double behind = 0.025;
  double furthest = 0, loudest = 0, squares = 0;
  int settled = 0;
  for (int step = 0; step < 30'000; ++step) {
    const double off = following.Next(behind + unevenly(random), kEvery) - 1 - kDifference;
    behind -= off * kEvery;
    if (step * kEvery < 30) continue;
    furthest = std::max(furthest, std::abs(behind));
    loudest = std::max(loudest, std::abs(off));
    squares += off * off;
    ++settled;
  }
  EXPECT_LT(furthest, 0.0005);
  EXPECT_LT(loudest, 600e-6) << "a cent";
  EXPECT_LT(std::sqrt(squares / settled), 100e-6);
}

TEST(Bend, CatchesUpWithinThreeSeconds) {
  Following following;
  double behind = -Following::kFurthest;
  for (int step = 0; step < 150; ++step) behind -= (following.Next(behind, 0.02) - 1) * 0.02;
  EXPECT_LT(std::abs(behind), 0.001);
  following.Rest();
  EXPECT_NEAR(following.Bend(), 1, 0.001);
}

}  // namespace
}  // namespace engine
