// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>

#include "app/tests/Evening.h"

namespace app {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

class ApplyTest : public testing::Evening {
 protected:
  ApplyTest() {
    fs::remove_all(music_);
    StartUp();
    catalogue::FileTags tags;
    tags.artist = "A";
    tags.title = "T";
    tags.genre = "Pop";
    tags.duration = std::chrono::seconds(225);
    tags_.AcceptAnyFile(tags);
    Music().AddRow(std::vector<std::string_view>{"old"});
    Karaoke().AddRow(std::vector<std::string_view>{"old"});
    station_->AttachWindow(&window_, &window_);
  }
  /// A row whose file is not in the folder any more.
  void AddLost() {
    const std::string path = Path("lost.mp3");
    Music().AddRow(std::vector<std::string_view>{"lost", "", "", path});
  }
  ~ApplyTest() override { fs::remove_all(music_); }

  void Write(const std::string& name) {
    fs::create_directories((music_ / name).parent_path());
    std::ofstream(music_ / name) << "x";
  }
  void Apply(ApplyMode mode) { Apply(mode, music_.string()); }
  void Apply(ApplyMode mode, const std::string& folder) {
    station_->ApplyButton().Press({mode, folder, {}}, [this](const Reindex::Outcome& outcome) {
      outcome_ = outcome;
      ++outcomes_;
    });
  }
  void Work() {
    while (workers_.RunOne()) station_->PumpWindow();
  }
  static Lines Column(const catalogue::track_table& table, int column) {
    Lines cells;
    for (int row = 1; row <= table.Rows(); ++row) cells.emplace_back(table.Cell(row, column));
    return cells;
  }
  [[nodiscard]] std::string Path(const char* name) const { return (music_ / name).make_preferred().string(); }

  fs::path music_ = fs::path(::testing::TempDir()) / "apply-music";
  Reindex::Outcome outcome_;
  int outcomes_ = 0;
};

TEST_F(ApplyTest, AMusicScanReplacesTheCatalogueMaskByMaskAndSavesIt) {
  for (const char* name : {"b.ogg", "deep/a.mp3", "z.mp3", "c.wav", "d.FLAC"}) Write(name);
  Apply(ApplyMode::ReindexMusic);
  EXPECT_EQ(Music().Rows(), 1) << "the old table stands until the new one is there";
  Work();
  EXPECT_EQ(Column(Music(), catalogue::track::kFilename),
            (Lines{Path("deep/a.mp3"), Path("z.mp3"), Path("b.ogg"), Path("d.FLAC"), ""}));
  EXPECT_EQ(outcome_.found, 4);
  EXPECT_TRUE(files_.Content(folder_ / "tlv.ndx").has_value());
  EXPECT_EQ(Karaoke().Rows(), 1);
}

TEST_F(ApplyTest, TheFolderThatNobodyChoseIsScannedAsTheSettingsWriteIt) {
  const std::string written = station_->Settings().Text("Settings", "Directory");
  ASSERT_EQ(written, folder_.string() + "\\MyMusic");
  fs::create_directories(folder_ / "MyMusic");
  std::ofstream(folder_ / "MyMusic" / "a.mp3") << "x";
  Apply(ApplyMode::ReindexMusic, written);
  Work();
  fs::remove_all(folder_);
  EXPECT_EQ(Column(Music(), catalogue::track::kFilename),
            (Lines{(folder_ / "MyMusic" / "a.mp3").make_preferred().string(), ""}));
}

TEST_F(ApplyTest, RowsGoWhenTheQuestionIsAnsweredAndStayWhenItIsClosed) {
  Write("a.mp3");
  for (const bool yes : {false, true}) {
    AddLost();
    Apply(ApplyMode::ReindexMusic);
    Work();
    EXPECT_TRUE(window_.Asked().starts_with("The list has ")) << window_.Asked();
    EXPECT_NE(window_.Asked().find("the scan found 1 file. "), std::string::npos);
    EXPECT_NE(window_.Asked().find(Path("lost.mp3")), std::string::npos);
    window_.Answer(yes);
    Work();
    EXPECT_EQ(Music().FindRow(catalogue::track::kFilename, Path("lost.mp3")) > 0, !yes);
    EXPECT_EQ(Music().Cell(1, catalogue::track::kFilename), Path("a.mp3"));
  }
}

TEST_F(ApplyTest, TheOtherFoldersOfTheSettingsAreScannedToo) {
  Write("one/a.mp3");
  Write("two/b.mp3");
  Store("Settings", "Directory3", Path("two"));
  Apply(ApplyMode::ReindexMusic, Path("one"));
  Work();
  EXPECT_EQ(Column(Music(), catalogue::track::kFilename), (Lines{Path("one/a.mp3"), Path("two/b.mp3"), ""}));
}

TEST_F(ApplyTest, ARescanKeepsWhatWasFoundAndSet) {
  Write("a.mp3");
  Apply(ApplyMode::ReindexMusic);
  Work();
  namespace track = catalogue::track;
  const std::pair<int, const char*> cells[] = {{track::kBpm, "128.00"},
                                               {track::kGain, "-3.21"},
                                               {track::kStartMixPoint, "1.500"},
                                               {track::kEndMixPoint, "170.000"}};
  for (const auto& [column, text] : cells) Music().SetCell(1, column, text);
  Apply(ApplyMode::ReindexMusic);
  Work();
  EXPECT_EQ(outcomes_, 2);
  for (const auto& [column, text] : cells) EXPECT_EQ(Music().Cell(1, column), text);
}

TEST_F(ApplyTest, AFileThatIsNotThereIsMarkedAndNoOther) {
  Write("a.mp3");
  Write("b.mp3");
  Apply(ApplyMode::ReindexMusic);
  while (outcomes_ == 0 && workers_.RunOne()) station_->PumpWindow();
  const std::size_t checks = station_->Collections().Missing().Answers();
  fs::remove(music_ / "b.mp3");
  Work();
  EXPECT_GT(station_->Collections().Missing().Answers(), checks);
  EXPECT_TRUE(station_->Collections().Missing().Has(Path("b.mp3")));
  EXPECT_FALSE(station_->Collections().Missing().Has(Path("a.mp3")));
}

TEST_F(ApplyTest, AKaraokeScanFillsTheKaraokeRecord) {
  Write("song.mp3");
  Apply(ApplyMode::ReindexKaraoke);
  Work();
  Lines cells;
  for (int column = 1; column <= 6; ++column) cells.emplace_back(Karaoke().Cell(1, column));
  EXPECT_EQ(cells, (Lines{"A", "T", "", "Pop", "03:45", Path("song.mp3")}));
  EXPECT_TRUE(files_.Content(folder_ / "tlvkaraoke.ndx").has_value());
}

TEST_F(ApplyTest, ACancelledScanLeavesTheTableAsItWas) {
  for (int file = 0; file < 20; ++file) Write(std::to_string(file) + ".mp3");
  Apply(ApplyMode::ReindexMusic);
  for (int i = 0; i < 3; ++i) workers_.RunOne();
  EXPECT_EQ(station_->Collections().Scanning().total, 20);
  EXPECT_EQ(station_->Collections().Scanning().done, 16);
  station_->Collections().CancelScans();
  Work();
  EXPECT_EQ(Column(Music(), catalogue::track::kArtist), Lines{"old"});
  EXPECT_FALSE(outcome_.replaced);
  EXPECT_FALSE(station_->Collections().IsScanning());
}

TEST_F(ApplyTest, AFolderThatIsNotThereIsToldAndChangesNothing) {
  Apply(ApplyMode::ReindexMusic);
  Work();
  EXPECT_EQ(Column(Music(), catalogue::track::kArtist), Lines{"old"});
  EXPECT_EQ(outcome_.sentence, "There is no folder \"" + music_.string() + "\".");
}

TEST_F(ApplyTest, FilesThatCannotBePlayedAreCounted) {
  for (const char* name : {"a.kar", "b.mp3"}) Write(name);
  Apply(ApplyMode::ReindexKaraoke);
  Work();
  EXPECT_EQ(outcome_.found, 1);
  EXPECT_EQ(outcome_.sentence, "1 file was left out, because it cannot be played.");
}

TEST_F(ApplyTest, AFileThatMovedIsFollowedByThePlaylistsAndKeepsItsMixPoints) {
  Write("old/a.mp3");
  Apply(ApplyMode::ReindexMusic);
  Work();
  Music().SetCell(1, catalogue::track::kEndMixPoint, "170.000");
  Playlist(1).AppendFrom(Music(), 1);
  fs::rename(music_ / "old", music_ / "new");
  Apply(ApplyMode::ReindexMusic);
  Work();
  EXPECT_EQ(Playlist(1).Cell(1, catalogue::track::kFilename), Path("new/a.mp3"));
  EXPECT_EQ(Music().Cell(1, catalogue::track::kEndMixPoint), "170.000");
  EXPECT_EQ(outcome_.sentence, "1 file was found again in another folder.");
}

TEST_F(ApplyTest, ASecondScanTakesThePlaceOfTheFirst) {
  Write("a.mp3");
  Apply(ApplyMode::ReindexMusic);
  Apply(ApplyMode::ReindexMusic);
  Work();
  EXPECT_EQ(outcomes_, 2);
  EXPECT_EQ(outcome_.found, 1);
  EXPECT_EQ(Music().Rows(), 2);
}

TEST_F(ApplyTest, AScanEndsWithTheProgram) {
  Write("a.mp3");
  Apply(ApplyMode::ReindexMusic);
  workers_.RunOne();
  station_->ShutDown();
  const int reads = tags_.Reads();
  workers_.RunAll();
  EXPECT_EQ(tags_.Reads(), reads);
}

TEST_F(ApplyTest, AnEmptyChoiceOfFolderChangesNothing) {
  station_->ApplyButton().Press({ApplyMode::ChooseDirectory, "/music", {}});
  station_->ApplyButton().Press({ApplyMode::ChooseDirectory, "", {}});
  EXPECT_EQ(Stored("Settings", "Directory"), "/music");
}

TEST_F(ApplyTest, ColoursAreWrittenForTheChannelsOfTheConsole) {
  const std::vector<StoredColour> colours(32, 0x0000FF);
  for (const auto& [size, written] : {std::pair{"16", "(none)"}, {"32", "255"}}) {
    Store("Setup", "ConsoleSize", size);
    station_->ApplyButton().Press({ApplyMode::ChannelColours, "", colours});
    EXPECT_EQ(Stored("Channels", "Color16"), "255") << size;
    EXPECT_EQ(Stored("Channels", "Color17"), written) << size;
    EXPECT_EQ(ReadColours(station_->Settings()).size(), static_cast<std::size_t>(std::stoi(size)));
  }
}

TEST_F(ApplyTest, HelpOpensAtItsIntroduction) {
  station_->AttachWindow(nullptr, nullptr);
  station_->ApplyButton().Press({ApplyMode::Help, "", {}});
  station_->AttachWindow(&window_, &window_);
  station_->ApplyButton().Press({ApplyMode::Help, "", {}});
  EXPECT_EQ(window_.Opened(), (folder_ / "help" / "djTOLVENgold.chm").string() + " at introduction.htm");
}

}  // namespace
}  // namespace app
