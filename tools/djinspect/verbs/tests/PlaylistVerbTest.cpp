// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "platform/files/testing/TestFolder.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

class PlaylistVerbTest : public ::testing::Test {
 protected:
  ExitCode Inspect(const std::string& name, const std::string& text) {
    folder_.Write(name, text);
    return Inspect((folder_ / name).string());
  }
  ExitCode Inspect(const std::string& path) {
    std::ostringstream out, err;
    const std::string arguments[] = {"playlist", path};
    const ExitCode code = djinspect::Run(arguments, out, err);
    printed_ = nlohmann::json::parse(out.str(), nullptr, false);
    return code;
  }
  platform::files::testing::TestFolder folder_;
  nlohmann::json printed_;
};

TEST_F(PlaylistVerbTest, PathsArePrintedAsTheyStand) {
  ASSERT_EQ(Inspect("a.M3U8", "\xEF\xBB\xBF#EXTM3U\r\n#x\r\n\r\nC:\\q.mp3\r \"b\" \n\xE9.mp3"),
            ExitCode::Read);
  const nlohmann::json expected{{"entries", {"\uFEFF#EXTM3U", "C:\\q.mp3", " \"b\" ", "\u00E9.mp3"}}};
  EXPECT_EQ(printed_, expected);
}

TEST_F(PlaylistVerbTest, TheOwnFormatIsPrintedRowByRow) {
  ASSERT_EQ(Inspect("a.tpl", "1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t12\t13\r\nnonsense\r\n"), ExitCode::Read);
  ASSERT_EQ(printed_["rows"].size(), 1u);
  EXPECT_EQ(printed_["rows"][0].size(), 13u);
  EXPECT_EQ(printed_["rows"][0][12], "13");
  ASSERT_EQ(Inspect("empty.tpl", ""), ExitCode::Read);
  EXPECT_EQ(printed_["rows"].size(), 0u);
}

TEST_F(PlaylistVerbTest, WhatCannotBeReadIsSaid) {
  EXPECT_EQ(Inspect("/no/such.m3u"), ExitCode::NothingRead);
  EXPECT_EQ(Inspect("/no/such.tpl"), ExitCode::NothingRead);
  EXPECT_EQ(Inspect("a.txt", "x"), ExitCode::NothingRead);
}

}  // namespace
}  // namespace tools::djinspect
