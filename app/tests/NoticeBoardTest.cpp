// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/NoticeBoard.h"

#include <gtest/gtest.h>

namespace app {
namespace {

using Kind = NoticeBoard::Subject::Kind;
using support::AsItStands;
using support::Sentence;
using Lines = std::vector<std::string>;

class NoticeBoardTest : public ::testing::Test {
 protected:
  [[nodiscard]] Lines Told() {
    Lines texts;
    for (const Notice& notice : board_.Standing()) texts.push_back(notice.text);
    return texts;
  }
  support::Sentences say_;
  NoticeBoard board_{say_};
};

TEST_F(NoticeBoardTest, WarningsStandSideBySideAndOneNewsAtATime) {
  board_.Warn({}, AsItStands("The disk is full."));
  board_.Tell({Kind::Sync, 1}, AsItStands("Too far apart."));
  board_.Warn({Kind::Device, 1}, AsItStands("The card is gone."));
  board_.Tell({Kind::Sync, 2}, AsItStands("No tempo."));
  EXPECT_EQ(Told(), (Lines{"The disk is full.", "The card is gone.", "No tempo."}));
  board_.Settle({Kind::Device, 1});
  board_.Settle({Kind::Sync, 1});
  board_.Settle({});
  EXPECT_EQ(Told(), (Lines{"The disk is full.", "No tempo."}));
}

TEST_F(NoticeBoardTest, WhatIsToldAgainIsNewAndWhatIsCorrectedIsNot) {
  board_.Warn({Kind::MissingFiles, 0}, AsItStands("3 files are gone."));
  board_.Correct({Kind::MissingFiles, 0}, AsItStands("2 files are gone."));
  EXPECT_EQ(board_.Standing().front().number, 1U);
  EXPECT_EQ(Told(), Lines{"2 files are gone."});
  board_.Warn({Kind::MissingFiles, 0}, AsItStands("2 files are gone."));
  ASSERT_EQ(Told().size(), 1U);
  EXPECT_EQ(board_.Standing().front().number, 2U);
  board_.Correct({Kind::Device, 1}, AsItStands("Nobody told of it."));
  EXPECT_EQ(Told().size(), 1U);
}

TEST_F(NoticeBoardTest, TheSameSentenceStandsOnceAndNotTooManyDo) {
  for (int i = 0; i < 3; ++i) board_.Warn({}, AsItStands("The disk is full."));
  EXPECT_EQ(Told(), Lines{"The disk is full."});
  for (int i = 0; i < 1000; ++i) board_.Warn({}, AsItStands(std::to_string(i)));
  EXPECT_EQ(Told().size(), 8U);
  EXPECT_EQ(Told().back(), "999");
}

TEST_F(NoticeBoardTest, WhatStandsIsSaidInTheLanguageThatIsChosenLaterAndStaysSeen) {
  const support::Error why = support::Failed(support::ErrorCode::Unreadable, Sentence::FolderReadOnly);
  board_.Warn({}, {Sentence::PlaylistNotSaved, {}, {SayingOf(why)}});
  board_.Warn({Kind::Device, 1}, {Sentence::OutputGone, {"USB card"}});
  board_.WarnFurther({Kind::Device, 1}, {Sentence::PlayingGoesOn, {"Speakers"}});
  const std::uint64_t number = board_.Standing().back().number;
  support::Sentences german;
  german.Choose(4000);
  say_.Choose(4000);
  EXPECT_EQ(Told(), (Lines{german(Sentence::PlaylistNotSaved, {german(Sentence::FolderReadOnly)}),
                           german(Sentence::OutputGone, {"USB card"}) + " " +
                               german(Sentence::PlayingGoesOn, {"Speakers"})}));
  EXPECT_EQ(board_.Standing().back().number, number);
}

}  // namespace
}  // namespace app
