// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "karaoke/testing/MidiBytes.h"
#include "platform/archive/testing/ZipMaker.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/tags/TagWriter.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
using platform::archive::testing::ZipBytes;

class ScanVerbTest : public ::testing::Test {
 protected:
  ScanVerbTest() : tree_(media_.PathOf("tree")) { fs::create_directories(tree_ / "deep" / "er"); }
  /// A file of a second; with a tag where it has a title.
  void Track(const std::string& name, const std::string& title = {}) {
    const std::string made = media_.Write(fs::path(name).filename().string(),
                                          platform::codec::testing::Silence(std::chrono::seconds(1)));
    catalogue::FileTags tags;
    tags.artist = title.empty() ? "" : "Singer";
    tags.title = title;
    EXPECT_TRUE(title.empty() || platform::tags::WriteTags(made, tags));
    fs::rename(made, tree_ / name);
  }
  ExitCode Inspect(const Names& arguments) {
    out_.str("");
    err_.str("");
    return djinspect::Run(arguments, out_, err_);
  }
  Names Column(std::size_t column) {
    Names cells;
    const auto printed = nlohmann::json::parse(out_.str());
    for (const auto& row : printed["rows"]) cells.push_back(row[column - 1]);
    return cells;
  }

  platform::codec::testing::MediaMaker media_;
  fs::path tree_;
  std::ostringstream out_, err_;
};

TEST_F(ScanVerbTest, PrintsTheRowsOfRealFilesInTheOrderOfTheScan) {
  Track("b.mp3", "B");
  Track("a.ogg", "A");
  Track("deep/z.mp3", "Z");
  Track("deep/er/y.mp3", "Y");
  Track("Some - Name.flac");
  Track("w.wav");
  ASSERT_EQ(Inspect({"scan", tree_.string(), "--mode", "music"}), ExitCode::Read);
  EXPECT_EQ(Column(2), (Names{"Y", "Z", "B", "A", "Name"}));
  EXPECT_EQ(Column(1).back(), "Some");
  EXPECT_EQ(Column(4)[0], (tree_ / "deep" / "er" / "y.mp3").string());
  std::uintmax_t bytes = 0;
  for (const auto& entry : fs::recursive_directory_iterator(tree_)) {
    if (entry.is_regular_file() && entry.path().extension() != ".wav") bytes += entry.file_size();
  }
  EXPECT_EQ(nlohmann::json::parse(out_.str())["bytes"], bytes);
}

TEST_F(ScanVerbTest, AKaraokeScanTakesSongsThroughTheirReader) {
  using karaoke::testing::TrackBytes;
  TrackBytes words;
  words.Name("Words").Text(0, "@LENGL").Text(0, "@TThe Song").Text(0, "@TThe Singer").Text(480 * 4, "/la");
  const std::string song =
      karaoke::testing::FileBytes({karaoke::testing::UsualHead().Tempo(0, 500'000).End(), words.End()});
  fs::rename(media_.WriteBytes("s.KAR", song), tree_ / "s.KAR");
  fs::rename(media_.WriteBytes("no.mid", "these are no notes"), tree_ / "no.mid");
  Track("deep/m.mp3", "M");
  const std::string zip =
      ZipBytes({{"m.mp3", platform::codec::testing::MediaMaker::BytesOf((tree_ / "deep/m.mp3").string())},
                {"m.cdg", "picture"}});
  fs::rename(media_.WriteBytes("z.zip", zip), tree_ / "z.zip");
  ASSERT_EQ(Inspect({"scan", tree_.string(), "--mode", "karaoke"}), ExitCode::Read);
  EXPECT_EQ(Column(2), (Names{"M", "The Song"}));
  EXPECT_EQ(Column(1), (Names{"Singer", "The Singer"}));
  EXPECT_EQ(Column(6).back(), (tree_ / "s.KAR").string());
  const auto bytes = [&](const char* name) { return fs::file_size(tree_ / name); };
  EXPECT_EQ(nlohmann::json::parse(out_.str())["bytes"],
            bytes("s.KAR") + bytes("no.mid") + bytes("deep/m.mp3"));
}

TEST_F(ScanVerbTest, AMissingFolderEndsWithOneAndAnotherModeWithTwo) {
  EXPECT_EQ(Inspect({"scan", media_.PathOf("none"), "--mode", "music"}), ExitCode::NothingRead);
  EXPECT_NE(err_.str(), "");
  EXPECT_EQ(Inspect({"scan", tree_.string(), "--mode", "video"}), ExitCode::WrongUse);
  EXPECT_EQ(Inspect({"scan", tree_.string()}), ExitCode::WrongUse);
}

TEST_F(ScanVerbTest, MixTagsPrintsTheValuesOfABlockThatAreThere) {
  const struct {
    const char* block;
    const char* printed;
  } cases[] = {{"a comment\r\npea\r\n-1.5\r\nBPM\r\n120\r\nPEA\r\n9", R"({"Gain":"-1.5","BPM":"120"})"},
               {"SMP\n0.5\nEMP\n60.000", R"({"StartMixPoint":"0.5","EndMixPoint":"60.000"})"},
               {"SMP", "{}"},
               {"no keys", "{}"}};
  for (const auto& one : cases) {
    ASSERT_EQ(Inspect({"mixtags", media_.WriteBytes("block", one.block)}), ExitCode::Read);
    EXPECT_EQ(nlohmann::ordered_json::parse(out_.str()).dump(), one.printed);
  }
  EXPECT_EQ(Inspect({"mixtags", media_.PathOf("none")}), ExitCode::NothingRead);
}

}  // namespace
}  // namespace tools::djinspect
