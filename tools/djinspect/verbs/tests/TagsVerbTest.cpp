// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "platform/codec/testing/MediaMaker.h"
#include "platform/tags/TagFileEditor.h"
#include "platform/tags/TagWriter.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using platform::codec::testing::MediaMaker;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using namespace std::chrono_literals;

class TagsVerbTest : public ::testing::Test {
 protected:
  ExitCode Inspect(const std::vector<std::string>& arguments) {
    out_.str("");
    err_.str("");
    return djinspect::Run(arguments, out_, err_);
  }
  nlohmann::ordered_json Printed() const { return nlohmann::ordered_json::parse(out_.str()); }

  std::string Track(std::string_view name, const catalogue::FileTags& tags) const {
    const std::string path = media_.Write(name, platform::codec::testing::Silence(65s, {22050, 1}), 64'000);
    EXPECT_TRUE(platform::tags::WriteTags(path, tags));
    return path;
  }

  MediaMaker media_;
  std::ostringstream out_, err_;
};

TEST_F(TagsVerbTest, PrintsTheThirteenColumnsInTheirOrder) {
  ASSERT_EQ(Inspect({"tags", Track("x.flac", {})}), ExitCode::Read);
  std::vector<std::string> keys;
  const nlohmann::ordered_json printed = Printed();
  for (const auto& [key, value] : printed.items()) keys.push_back(key);
  EXPECT_THAT(keys,
              ::testing::ElementsAre("Artist", "Title", "Time", "Filename", "BPM", "Genre", "Album", "Year",
                                     "Bitrate", "Freq", "Gain", "StartMixPoint", "EndMixPoint"));
}

TEST_F(TagsVerbTest, CellsAreTextAsACatalogueRowHoldsThem) {
  catalogue::FileTags tags;
  tags.artist = "Jos\xC3\xA9";
  tags.title = "Canci\xC3\xB3n";
  tags.bpm = "127.5";
  tags.text_block = "first line\r\npea\r\n-3.20\r\nSMP\r\n0.750\r\nPEA\r\n9";
  tags.user_items = {{"SMP", "1.250"}, {"EMP", "60.000"}};
  const std::string path = Track("song.mp3", tags);
  ASSERT_EQ(Inspect({"tags", path}), ExitCode::Read);
  EXPECT_EQ(Printed()["Artist"], "Jos\xC3\xA9");
  EXPECT_EQ(Printed()["Time"], "01:05");
  EXPECT_EQ(Printed()["Filename"], path);
  EXPECT_EQ(Printed()["BPM"], "127.50");
  EXPECT_EQ(Printed()["Freq"], "22050");
  EXPECT_EQ(Printed()["Gain"], "-3.20");
  EXPECT_EQ(Printed()["StartMixPoint"], "1.250");
  EXPECT_EQ(Printed()["EndMixPoint"], "60.000");
}

TEST_F(TagsVerbTest, WhatCannotBeReadEndsWithOneAndASentence) {
  EXPECT_EQ(Inspect({"tags", media_.PathOf("gone.mp3")}), ExitCode::NothingRead);
  EXPECT_THAT(err_.str(), StartsWith("gone.mp3 was not found"));
  EXPECT_EQ(Inspect({"tags", media_.Text("notes.mp3")}), ExitCode::NothingRead);
  EXPECT_EQ(out_.str(), "");
}

TEST_F(TagsVerbTest, WrongUseEndsWithTwoAndTheUsage) {
  for (const std::vector<std::string>& wrong :
       std::vector<std::vector<std::string>>{{}, {"tags"}, {"tags", "a", "b"}, {"tag", "a"}, {""}}) {
    EXPECT_EQ(Inspect(wrong), ExitCode::WrongUse);
    EXPECT_THAT(err_.str(), HasSubstr("djinspect tags FILE"));
  }
}

TEST_F(TagsVerbTest, BytesThatAreNoUtf8ArePrintedAsLatin) {
  const std::string path = Track("r\xE9n\xE9.wav", {});
  ASSERT_EQ(Inspect({"tags", path}), ExitCode::Read);
  EXPECT_EQ(Printed()["Title"], "r\xC3\xA9n\xC3\xA9");
}

TEST(ReadableText, KnowsEveryWayOfBeingNoUtf8) {
  EXPECT_EQ(ReadableText("\xE2\x82\xAC \xF0\x9F\x8E\xB5"), "\xE2\x82\xAC \xF0\x9F\x8E\xB5");
  for (const char* wrong :
       {"\xE9", "\xC0\xAF", "\xE2\x82", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80", "\xE0\x80\x80"}) {
    EXPECT_NE(ReadableText(wrong), wrong);
  }
}

TEST_F(TagsVerbTest, AllShowsEveryFieldByItsOwnNameAndPicturesByTheirSize) {
  catalogue::FileTags tags;
  tags.artist = "Anna";
  const std::string path = Track("all.mp3", tags);
  catalogue::TagEdit edit;
  edit.cover = catalogue::TagPicture{"", "\xFF\xD8\xFF\xE0 red \xFF\xD9"};
  ASSERT_TRUE(platform::tags::TagFileEditor().Write(path, edit));
  ASSERT_EQ(Inspect({"tags", path, "--all"}), ExitCode::Read);
  const auto fields = Printed()["fields"];
  EXPECT_EQ(fields[0], (nlohmann::ordered_json{{"tag", "ID3v2"}, {"name", "TPE1"}, {"value", "Anna"}}));
  EXPECT_EQ(Printed()["pictures"],
            (nlohmann::ordered_json::parse(R"([{"type":"3","mime":"image/jpeg","bytes":11}])")));
  EXPECT_EQ(Inspect({"tags", media_.Text("notes.txt"), "--all"}), ExitCode::NothingRead);
}

}  // namespace
}  // namespace tools::djinspect
