// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "platform/files/testing/TestFolder.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using nlohmann::json;

class LibraryVerbTest : public ::testing::Test {
 protected:
  ExitCode Inspect(const std::string& name) {
    std::ostringstream out, err;
    const std::string arguments[] = {"library", (folder_ / name).string()};
    const ExitCode code = djinspect::Run(arguments, out, err);
    printed_ = json::parse(out.str(), nullptr, false);
    said_ = err.str();
    return code;
  }
  [[nodiscard]] std::string At(const std::string& name) const { return (folder_ / name).string(); }

  platform::files::testing::TestFolder folder_;
  json printed_;
  std::string said_;
};

TEST_F(LibraryVerbTest, ALibraryIsPrintedWhateverItIsCalled) {
  folder_.Write(
      "sounds.mp3",
      "<DJ_PLAYLISTS><COLLECTION><TRACK TrackID='1' Name='T' Location='file:///a.mp3' Rating='255'>"
      "<POSITION_MARK Type='0' Start='1.5' Num='0' Name='N'/><POSITION_MARK Type='4' Start='2' End='4'/>"
      "<TEMPO Inizio='0.5' Bpm='120' Metro='4/4' Battito='2'/></TRACK></COLLECTION><PLAYLISTS>"
      "<NODE Name='ROOT' Type='0'><NODE Name='L' Type='1' KeyType='0'><TRACK Key='1'/></NODE></NODE>"
      "</PLAYLISTS></DJ_PLAYLISTS>");
  ASSERT_EQ(Inspect("sounds.mp3"), ExitCode::Read);
  const json cue{{"kind", "cue"}, {"start", 1.5}, {"end", nullptr},
                 {"number", 0},   {"name", "N"},  {"colour", ""}};
  EXPECT_EQ(printed_["kind"], "rekordbox");
  EXPECT_EQ(printed_["tracks"][0]["cues"][0], cue);
  EXPECT_EQ(printed_["tracks"][0]["cues"][1]["end"], 4);
  EXPECT_EQ(printed_["tracks"][0]["rating"], 5);
  EXPECT_EQ(printed_["tracks"][0]["grid"], json::array({{{"start", 0.5}, {"bpm", 120}, {"beat", 2}}}));
  EXPECT_EQ(printed_["lists"], json::array({{{"name", "L"}, {"tracks", {"/a.mp3"}}}}));
  EXPECT_EQ(printed_["notes"], json::array());
}

TEST_F(LibraryVerbTest, PathListsOfAFileAndOfAFolderAreLists) {
  std::filesystem::create_directories(folder_ / "in");
  folder_.Write("in/a.m3u8", "\xEF\xBB\xBF#EXTM3U\r\nx.mp3\r\n../y.mp3\r\nC:\\z.mp3\r\n");
  folder_.Write("b.m3u", "in/x.mp3\n");
  folder_.Write("named.txt", "x.mp3\n");
  ASSERT_EQ(Inspect(""), ExitCode::Read);
  const json lists = {{{"name", "b"}, {"tracks", {At("in/x.mp3")}}},
                      {{"name", "in/a"}, {"tracks", {At("in/x.mp3"), At("y.mp3"), "C:/z.mp3"}}}};
  EXPECT_EQ(printed_["kind"], "m3u");
  EXPECT_EQ(printed_["lists"], lists);
  EXPECT_EQ(printed_["tracks"].size(), 3u);
  ASSERT_EQ(Inspect("named.txt"), ExitCode::Read);
  EXPECT_EQ(printed_["lists"][0]["name"], "named");
}

TEST_F(LibraryVerbTest, WhatIsNoLibraryIsSaid) {
  folder_.Write("empty.xml", "");
  folder_.Write("page.xml", "<html/>");
  folder_.Write("letter.m3u", "Dear all,\nthank you.\n");
  folder_.Write("bomb.nml", "<!DOCTYPE NML [<!ENTITY a 'aa'>]><NML>&a;</NML>");
  for (const char* name : {"empty.xml", "page.xml", "letter.m3u", "bomb.nml", "missing.xml"}) {
    EXPECT_EQ(Inspect(name), ExitCode::NothingRead) << name;
    EXPECT_NE(said_.find(name), std::string::npos) << said_;
  }
}

}  // namespace
}  // namespace tools::djinspect
