// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "platform/files/testing/TestFolder.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using platform::files::testing::TestFolder;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Json = nlohmann::json;

class IndexVerbTest : public ::testing::Test {
 protected:
  std::string Path(std::string_view name) const { return (folder_ / name).string(); }
  std::string Index(std::string_view text) const {
    folder_.Write("x.ndx", text);
    return Path("x.ndx");
  }
  ExitCode Inspect(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "index");
    out_.str("");
    err_.str("");
    return djinspect::Run(arguments, out_, err_);
  }
  [[nodiscard]] Json Printed() const { return Json::parse(out_.str()); }

  TestFolder folder_;
  std::ostringstream out_, err_;
};

TEST_F(IndexVerbTest, PrintsEveryRowWithAllItsCells) {
  const std::string row = "A\tT\t03:45\t/a.mp3\t118.00\t\t\t\t\t\t-3.20\t0.500\t60.000\r\n";
  ASSERT_EQ(Inspect({Index(row + row)}), ExitCode::Read);
  EXPECT_THAT(Printed()["columns"], SizeIs(13));
  EXPECT_EQ(Printed()["columns"][11], "StartMixPoint");
  EXPECT_THAT(Printed()["rows"], SizeIs(2));
  EXPECT_EQ(Printed()["rows"][1],
            (Json{"A", "T", "03:45", "/a.mp3", "118.00", "", "", "", "", "", "-3.20", "0.500", "60.000"}));
  EXPECT_EQ(Printed()["skipped"], 0);
}

TEST_F(IndexVerbTest, TakesTheKaraokeColumnsWhenAsked) {
  ASSERT_EQ(Inspect({Index("A\tT\\t\tO\tG\t03:45\tr\xE9.kar\r\n"), "--karaoke"}), ExitCode::Read);
  EXPECT_EQ(Printed()["columns"], (Json{"Artist", "Title", "Origin", "Genre", "Time", "Filename"}));
  EXPECT_EQ(Printed()["rows"], (Json{{"A", "T\t", "O", "G", "03:45", "r\xC3\xA9.kar"}}));
}

#ifndef _WIN32
TEST_F(IndexVerbTest, WhatNeverEndsIsGivenUp) {
  EXPECT_EQ(Inspect({"/dev/zero"}), ExitCode::NothingRead);
  EXPECT_THAT(err_.str(), HasSubstr("\"/dev/zero\" is too long for an index"));
  EXPECT_THAT(out_.str(), IsEmpty());
}
#endif

TEST_F(IndexVerbTest, CountsTheLinesThatAreNoRow) {
  ASSERT_EQ(Inspect({"--karaoke", Index("1\t2\t3\t4\t5\t6\r\nshort\r\n1\t2\t3\t4\t5\t6\\x")}),
            ExitCode::Read);
  EXPECT_THAT(Printed()["rows"], SizeIs(1));
  EXPECT_EQ(Printed()["skipped"], 2);
}

TEST_F(IndexVerbTest, RewritesAnIndexToTheSameBytes) {
  const std::string text = "\t\t\t\t\t\r\n\\t\t\\r\\n\t\\\\\t\xFF\t03:45\t/caf\xC3\xA9.kar\r\n";
  ASSERT_EQ(Inspect({Index(text), "--karaoke", "--rewrite", Path("copy.ndx")}), ExitCode::Read);
  EXPECT_EQ(folder_.Read("copy.ndx"), text);
  EXPECT_THAT(Printed()["rows"], SizeIs(2));
  ASSERT_EQ(Inspect({Path("x.ndx"), "--rewrite", Path("x.ndx"), "--karaoke"}), ExitCode::Read);
  EXPECT_EQ(folder_.Read("x.ndx"), text) << "in its own place too";
}

TEST_F(IndexVerbTest, RewritesOnlyWhatIsWhole) {
  ASSERT_EQ(Inspect({Index("cut\r\n1\t2\t3\t4\t5\t6"), "--karaoke", "--rewrite", Path("copy")}),
            ExitCode::Read);
  EXPECT_EQ(folder_.Read("copy"), "1\t2\t3\t4\t5\t6\r\n");
}

TEST_F(IndexVerbTest, AnEmptyIndexIsATableWithoutRows) {
  ASSERT_EQ(Inspect({Index("")}), ExitCode::Read);
  EXPECT_THAT(Printed()["rows"], IsEmpty());
}

TEST_F(IndexVerbTest, WhatCannotBeReadOrWrittenEndsWithOneAndASentence) {
  EXPECT_EQ(Inspect({Path("gone.ndx")}), ExitCode::NothingRead);
  EXPECT_THAT(err_.str(), HasSubstr("gone.ndx"));
  EXPECT_EQ(out_.str(), "");
  EXPECT_EQ(Inspect({Index(""), "--rewrite", Path("no folder/copy")}), ExitCode::NothingRead);
  EXPECT_THAT(err_.str(), HasSubstr("does not exist"));
}

TEST_F(IndexVerbTest, WrongUseEndsWithTwoAndTheUsage) {
  for (const std::vector<std::string>& wrong : std::vector<std::vector<std::string>>{
           {}, {"a", "b"}, {"a", "--rewrite"}, {"--karaoke"}, {"a", "--other"}, {"a", "--"}}) {
    EXPECT_EQ(Inspect(wrong), ExitCode::WrongUse);
    EXPECT_THAT(err_.str(), HasSubstr("djinspect index FILE [--karaoke] [--rewrite OUT]"));
  }
}

}  // namespace
}  // namespace tools::djinspect
