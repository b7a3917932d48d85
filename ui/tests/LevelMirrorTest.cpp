// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/LevelMirror.h"

#include <gtest/gtest.h>

namespace ui {
namespace {

using namespace std::chrono_literals;

TEST(LevelMirror, AHandIsBelievedBeforeAnOlderEchoAndThenTheUniverse) {
  LevelMirror mirror;
  LevelMirror::Levels reported{};
  const support::TimePoint start{1s};
  mirror.Move(7, 200, start);
  EXPECT_FALSE(mirror.Take(reported, start + 100ms));
  EXPECT_EQ(mirror.At(7), 200);
  reported[7] = 5;
  EXPECT_TRUE(mirror.Take(reported, start + 100ms)) << "another one was moved elsewhere";
  EXPECT_EQ(mirror.At(8), 5);
  EXPECT_TRUE(mirror.Take(reported, start + 1s)) << "it never arrived";
  EXPECT_EQ(mirror.At(7), 0);
  mirror.Move(7, 9, start + 2s);
  reported[6] = 9;
  EXPECT_FALSE(mirror.Take(reported, start + 2s));
  reported[6] = 3;
  EXPECT_TRUE(mirror.Take(reported, start + 2s)) << "once it has arrived, the next one counts at once";
}

TEST(LevelMirror, WhatIsOnlyShownStaysUntilAHandTakesItOrItIsLetGo) {
  LevelMirror mirror;
  LevelMirror::Levels reported{};
  const support::TimePoint start{1s};
  mirror.Hold(1, 100);
  mirror.Hold(2, 200);
  mirror.Move(2, 20, start);
  EXPECT_FALSE(mirror.Take(reported, start));
  EXPECT_TRUE(mirror.Take(reported, start + 1s)) << "the hand's never arrived";
  EXPECT_EQ(mirror.At(1), 100);
  EXPECT_EQ(mirror.At(2), 0);
  mirror.LetGo();
  EXPECT_TRUE(mirror.Take(reported, start + 1s));
  EXPECT_EQ(mirror.At(1), 0);
}

}  // namespace
}  // namespace ui
