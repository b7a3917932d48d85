// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/NoticeBoard.h"

#include <gtest/gtest.h>

namespace app {
namespace {

using Kind = NoticeBoard::Subject::Kind;
using Lines = std::vector<std::string>;

class NoticeBoardTest : public ::testing::Test {
 protected:
  [[nodiscard]] Lines Told() const {
    Lines texts;
    for (const Notice& notice : board_.Standing()) texts.push_back(notice.text);
    return texts;
  }
  NoticeBoard board_;
};

TEST_F(NoticeBoardTest, WarningsStandSideBySideAndOneNewsAtATime) {
  board_.Warn({}, "The disk is full.");
  board_.Tell({Kind::Sync, 1}, "Too far apart.");
  board_.Warn({Kind::Device, 1}, "The card is gone.");
  board_.Tell({Kind::Sync, 2}, "No tempo.");
  EXPECT_EQ(Told(), (Lines{"The disk is full.", "The card is gone.", "No tempo."}));
  board_.Settle({Kind::Device, 1});
  board_.Settle({Kind::Sync, 1});
  board_.Settle({});
  EXPECT_EQ(Told(), (Lines{"The disk is full.", "No tempo."}));
}

TEST_F(NoticeBoardTest, WhatIsToldAgainIsNewAndWhatIsCorrectedIsNot) {
  board_.Warn({Kind::MissingFiles, 0}, "3 files are gone.");
  board_.Correct({Kind::MissingFiles, 0}, "2 files are gone.");
  EXPECT_EQ(board_.Standing().front().number, 1U);
  EXPECT_EQ(Told(), Lines{"2 files are gone."});
  board_.Warn({Kind::MissingFiles, 0}, "2 files are gone.");
  ASSERT_EQ(Told().size(), 1U);
  EXPECT_EQ(board_.Standing().front().number, 2U);
  board_.Correct({Kind::Device, 1}, "Nobody told of it.");
  EXPECT_EQ(Told().size(), 1U);
}

TEST_F(NoticeBoardTest, TheSameSentenceStandsOnceAndNotTooManyDo) {
  for (int i = 0; i < 3; ++i) board_.Warn({}, "The disk is full.");
  EXPECT_EQ(Told(), Lines{"The disk is full."});
  for (int i = 0; i < 1000; ++i) board_.Warn({}, std::to_string(i));
  EXPECT_EQ(Told().size(), 8U);
  EXPECT_EQ(Told().back(), "999");
}

}  // namespace
}  // namespace app
