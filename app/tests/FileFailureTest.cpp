// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FileFailure.h"

#include <gtest/gtest.h>

#include <set>

namespace app {
namespace {

TEST(FileFailureTest, IsTheAdaptersOwnReasonInEnglishAndOneForEachKindInDutch) {
  using enum support::ErrorCode;
  support::Sentences say;
  std::set<std::string> dutch;
  for (const auto code : {NotFound, Unreadable, Empty, Malformed, Unsupported, Unavailable}) {
    const support::Error error{code, "song.mp3 is odd."};
    say.Choose(0);
    EXPECT_EQ(FileFailure(error, "/music/song.mp3", say), error.text);
    say.Choose(support::Sentences::kDutchBase);
    const std::string sentence = FileFailure(error, "/music/song.mp3", say);
    EXPECT_TRUE(sentence.starts_with("song.mp3 ")) << sentence;
    dutch.insert(sentence);
  }
  EXPECT_EQ(dutch.size(), 6U);
}

}  // namespace
}  // namespace app
