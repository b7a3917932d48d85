// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/FlashGuard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "lightorgan/testing/RecordingBoards.h"
#include "support/testing/FakeClock.h"

namespace lightorgan {
namespace {

using std::chrono::milliseconds;

class FlashGuardTest : public ::testing::Test {
 protected:
  FlashGuardTest() { guard_.SetSize(IoBoardSize::One); }

  /// Flips all outputs of board 0 every so often and gives how often they went on.
  int Flashes(milliseconds every, milliseconds time) {
    int flashes = 0;
    for (milliseconds at{0}; at < time; at += milliseconds(10)) {
      const auto before = boards_.lit;
      if (at % every == milliseconds(0)) guard_.OutputAllDigital(0, at / every % 2 == 0 ? 0xFF : 0);
      guard_.Tick();
      if ((boards_.lit & ~before).any()) ++flashes;
      clock_.Advance(milliseconds(10));
    }
    return flashes;
  }

  testing::RecordingBoards boards_;
  support::testing::FakeClock clock_;
  FlashGuard guard_{boards_, clock_};
};

TEST_F(FlashGuardTest, FourFlashesASecondPassAsTheyCameAndNoMore) {
  EXPECT_EQ(Flashes(milliseconds(130), milliseconds(5'200)), 20);
  clock_.Advance(std::chrono::seconds(2));
  EXPECT_LE(Flashes(milliseconds(30), milliseconds(5'000)), 20);
}

TEST_F(FlashGuardTest, WhatRisesInOneMomentIsOneFlashHoweverManyCallsItTakes) {
  guard_.SetSize(IoBoardSize::Two);
  for (int flash = 0; flash < 20; ++flash) {
    for (const int level : {0xFF, 0}) {
      for (const int board : {0, 1}) guard_.OutputAllDigital(board, static_cast<std::uint8_t>(level));
      EXPECT_EQ(boards_.lit.count(), level == 0 ? 0U : 16U) << flash;
      clock_.Advance(milliseconds(130));
    }
  }
}

TEST_F(FlashGuardTest, ManyLampsThatAreCalledOneByOneFlashNoMoreOftenThanTogether) {
  int flashes = 0;
  for (int half = 0; half < 80; ++half) {  // eight halves a second
    const int first = half % 2 == 0 ? 1 : 5;
    for (int channel = first; channel < first + 4; ++channel) guard_.SetDigitalChannel(0, channel);
    if (boards_.lit.count() > 1) ++flashes;
    for (int channel = 1; channel <= 8; ++channel) guard_.ClearDigitalChannel(0, channel);
    clock_.Advance(milliseconds(125));
  }
  EXPECT_EQ(flashes, 40);
}

TEST_F(FlashGuardTest, TheLiftedGuardPassesEveryCall) {
  guard_.Lift(true);
  EXPECT_EQ(Flashes(milliseconds(30), milliseconds(6'000)), 100);
}

TEST_F(FlashGuardTest, WhatHadToWaitGoesOnWhenItMay) {
  for (int flash = 0; flash < 4; ++flash) {
    guard_.SetDigitalChannel(0, 3);
    guard_.ClearDigitalChannel(0, 3);
  }
  guard_.SetDigitalChannel(0, 3);
  EXPECT_TRUE(boards_.lit.none());
  EXPECT_TRUE(guard_.Holding());
  clock_.Advance(milliseconds(999));
  guard_.Tick();
  EXPECT_TRUE(boards_.lit.none());
  clock_.Advance(milliseconds(1));
  guard_.Tick();
  EXPECT_TRUE(boards_.lit.test(2));
  EXPECT_FALSE(guard_.Holding());
}

TEST_F(FlashGuardTest, DarknessPassesAtOnceAndAChaseIsNoFlash) {
  (void)Flashes(milliseconds(30), milliseconds(500));
  guard_.OutputAllDigital(0, 0);
  EXPECT_TRUE(boards_.lit.none());
  clock_.Advance(std::chrono::seconds(2));
  for (int step = 0; step < 24; ++step) {
    guard_.OutputAllDigital(0, static_cast<std::uint8_t>(1U << (step % 8)));
    EXPECT_TRUE(boards_.lit.test(static_cast<std::size_t>(step % 8))) << step;
    clock_.Advance(milliseconds(50));
  }
}

}  // namespace
}  // namespace lightorgan
