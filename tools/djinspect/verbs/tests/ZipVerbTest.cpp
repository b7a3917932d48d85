// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <sstream>

#include "platform/archive/testing/ZipMaker.h"
#include "platform/files/testing/TestFolder.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

class ZipVerbTest : public ::testing::Test {
 protected:
  ExitCode Inspect(const std::string& bytes) {
    folder_.Write("song.zip", bytes);
    return djinspect::Run(std::vector<std::string>{"zip", (folder_ / "song.zip").string()}, out_, err_);
  }

  platform::files::testing::TestFolder folder_;
  std::ostringstream out_, err_;
};

TEST_F(ZipVerbTest, PrintsWhatIsInASong) {
  const std::string zip =
      platform::archive::testing::ZipBytes({{"Caf\x82/Song.CDG", "picture"}, {"song.mp3", "sound"}});
  ASSERT_EQ(Inspect(zip), ExitCode::Read);
  EXPECT_EQ(out_.str(), R"({
 "sound": {
  "name": "song.mp3",
  "bytes": 5
 },
 "picture": {
  "name": "Café/Song.CDG",
  "bytes": 7
 }
}
)");
}

TEST_F(ZipVerbTest, WhatIsNoSongEndsWithOneAndASentence) {
  EXPECT_EQ(Inspect("no archive"), ExitCode::NothingRead);
  EXPECT_EQ(err_.str(), "song.zip cannot be unpacked: it is no zip archive, or damaged.\n");
  EXPECT_EQ(out_.str(), "");
}

}  // namespace
}  // namespace tools::djinspect
