// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/Crossfader.h"

#include <gtest/gtest.h>

namespace decks {
namespace {

constexpr CrossfaderCurve kCurves[] = {CrossfaderCurve::Smooth, CrossfaderCurve::Cut,
                                       CrossfaderCurve::ConstantPower};

TEST(Crossfader, AtAnEndOneDeckIsFullAndTheOtherOneIsSilent) {
  for (const auto curve : kCurves) {
    const auto left = GainsAt(curve, -1);
    EXPECT_DOUBLE_EQ(left.first, 1);
    EXPECT_DOUBLE_EQ(left.second, 0);
    const auto right = GainsAt(curve, 1);
    EXPECT_DOUBLE_EQ(right.first, 0);
    EXPECT_DOUBLE_EQ(right.second, 1);
  }
}

TEST(Crossfader, MovingTowardsADeckNeverLowersItAndNeverLeavesTheRange) {
  for (const auto curve : kCurves) {
    double before = 0;
    for (int step = -100; step <= 100; ++step) {
      const auto gains = GainsAt(curve, step / 100.0);
      EXPECT_GE(gains.second, before);
      EXPECT_LE(gains.second, 1.0);
      EXPECT_DOUBLE_EQ(gains.first, GainsAt(curve, -step / 100.0).second);
      before = gains.second;
    }
  }
}

TEST(Crossfader, SmoothLeavesBothDecksFullInTheMiddle) {
  EXPECT_DOUBLE_EQ(GainsAt(CrossfaderCurve::Smooth, 0).first, 1);
  EXPECT_DOUBLE_EQ(GainsAt(CrossfaderCurve::Smooth, 0.5).first, 0.5);
}

TEST(Crossfader, CutLetsBothDecksThroughUntilTheLastTwentieth) {
  EXPECT_DOUBLE_EQ(GainsAt(CrossfaderCurve::Cut, 0.9).first, 1);
  EXPECT_NEAR(GainsAt(CrossfaderCurve::Cut, 0.95).first, 0.5, 1e-9);
}

TEST(Crossfader, ConstantPowerKeepsTheSumOfTheSquares) {
  for (int step = -100; step <= 100; ++step) {
    const auto gains = GainsAt(CrossfaderCurve::ConstantPower, step / 100.0);
    EXPECT_NEAR(gains.first * gains.first + gains.second * gains.second, 1.0, 1e-9);
  }
}

TEST(Crossfader, APositionOutsideTheTravelCountsAsTheNearerEnd) {
  EXPECT_DOUBLE_EQ(GainsAt(CrossfaderCurve::Smooth, -7).second, 0);
  EXPECT_DOUBLE_EQ(GainsAt(CrossfaderCurve::ConstantPower, 7).second, 1);
}

}  // namespace
}  // namespace decks
