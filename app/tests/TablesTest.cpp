// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>

#include "app/WorkstationView.h"
#include "app/tests/Evening.h"
#include "catalogue/RowMoves.h"
#include "karaoke/testing/MidiBytes.h"

namespace app {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

class TablesTest : public testing::Evening {
 protected:
  TablesTest() {
    folder_ = fs::path(::testing::TempDir()) / "tables";
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  ~TablesTest() override { fs::remove_all(folder_); }

  void Write(const std::string& name, std::string_view text = "x") {
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }
  [[nodiscard]] bool Exists(const std::string& name) const { return fs::exists(folder_ / name); }
  std::string AddRow(catalogue::track_table& table, int column, const std::string& name) {
    const std::string path = (folder_ / name).string();
    table.SetCell(table.AddRow(), column, path);
    return path;
  }
  void AddTracks(const Lines& names) {
    for (const std::string& name : names) AddRow(Music(), catalogue::track::kFilename, name);
  }
  /// The index of rows that only name files of its own folder.
  static std::string IndexOf(const Lines& names) {
    std::string text;
    for (const std::string& name : names) text += "\t\t\t./" + name + std::string(9, '\t') + "\r\n";
    return text;
  }
  void Delete(const std::vector<int>& rows) { station_->Collections().Music().Delete(rows, Taker()); }
  FileRemoval::Done Taker() {
    return [this](int rows, Lines kept) {
      removed_ = rows;
      kept_ = std::move(kept);
    };
  }
  void AddSongs(Lines paths) {
    station_->Collections().Intake().Add({.list = ListId::Karaoke, .paths = std::move(paths)},
                                         [this](const IntakeOutcome& outcome) { kept_ = outcome.refused; });
  }
  void Work() {
    while (workers_.RunOne()) station_->PumpWindow();
  }

  int removed_ = -1;
  Lines kept_;
};

TEST_F(TablesTest, DeletedTracksAreGoneFromDiskTableAndIndex) {
  StartUp();
  for (const char* name : {"1.mp3", "2.mp3", "3.mp3"}) Write(name);
  AddTracks({"1.mp3", "2.mp3", "3.mp3"});
  Delete({1, 3});
  EXPECT_TRUE(Exists("1.mp3")) << "the window waited for the disk";
  Work();
  EXPECT_FALSE(Exists("1.mp3") || Exists("3.mp3"));
  EXPECT_TRUE(Exists("2.mp3"));
  ASSERT_EQ(Music().Rows(), 1);
  EXPECT_EQ(Music().Cell(1, catalogue::track::kFilename), (folder_ / "2.mp3").string());
  EXPECT_EQ(files_.Content(folder_ / "tlv.ndx"), IndexOf({"2.mp3"}));
}

TEST_F(TablesTest, AFileThatCannotBeDeletedKeepsItsRowAndIsNamed) {
  StartUp();
  fs::create_directories(folder_ / "1.mp3");
  Write("2.mp3");
  AddTracks({"1.mp3", "2.mp3"});
  Delete({1, 2});
  Work();
  EXPECT_EQ(removed_, 1);
  EXPECT_EQ(kept_, Lines{"\"" + (folder_ / "1.mp3").string() + "\" could not be deleted."});
  EXPECT_TRUE(Exists("1.mp3"));
}

TEST_F(TablesTest, ARowWhoseFileIsNotThereStaysAndIsNotCalledDeleted) {
  StartUp();
  AddTracks({"1.mp3"});
  Delete({1, 5});
  Work();
  EXPECT_EQ(removed_, 0);
  ASSERT_EQ(kept_.size(), 1U);
  EXPECT_NE(kept_.front().find("not there now"), std::string::npos);
  EXPECT_EQ(Music().Rows(), 1);
}

TEST_F(TablesTest, RowsThatMovedMeanwhileAreFoundByTheirFile) {
  StartUp();
  Write("2.mp3");
  AddTracks({"1.mp3", "2.mp3", "3.mp3"});
  Delete({2});
  Music().RemoveRow(1);
  Work();
  ASSERT_EQ(Music().Rows(), 1);
  EXPECT_EQ(Music().Cell(1, catalogue::track::kFilename), (folder_ / "3.mp3").string());
}

TEST_F(TablesTest, AKaraokeSongGoesWithItsSoundAndItsDiscImage) {
  StartUp();
  for (const char* name : {"song.kar", "song.mp3", "Disc.MP3", "DISC.Cdg", "other.mp3"}) Write(name);
  AddRow(Karaoke(), catalogue::karaoke::kFilename, "song.kar");
  AddRow(Karaoke(), catalogue::karaoke::kFilename, "Disc.MP3");
  station_->Collections().Karaoke().Delete({1, 2}, Taker());
  Work();
  EXPECT_FALSE(Exists("song.kar") || Exists("song.mp3"));
  EXPECT_FALSE(Exists("Disc.MP3") || Exists("DISC.Cdg"));
  EXPECT_TRUE(Exists("other.mp3"));
  EXPECT_EQ(files_.Content(folder_ / "tlvkaraoke.ndx"), "");
}

TEST_F(TablesTest, AnArchiveHoldsItsOwnSoundAndLeavesTheMp3BesideItAlone) {
  StartUp();
  for (const char* name : {"song.ZIP", "song.mp3"}) Write(name);
  AddRow(Karaoke(), catalogue::karaoke::kFilename, "song.ZIP");
  station_->Collections().Karaoke().Delete({1}, Taker());
  Work();
  EXPECT_FALSE(Exists("song.ZIP"));
  EXPECT_TRUE(Exists("song.mp3"));
}

TEST_F(TablesTest, SongsAreTakenIntoTheKaraokeTableByTheirKind) {
  StartUp();
  Write("notes.kar", karaoke::testing::FileBytes(
                         {karaoke::testing::UsualHead().Name("Words").Text(0, "@TCounting").End(960)}));
  const auto path = [this](const char* name) { return (folder_ / name).string(); };
  for (const char* name : {"Anna - Packed.zip", "disc.mp3"}) tags_.AddFile(path(name));
  Write("broken.mid", "nothing");
  AddSongs({path("notes.kar"), path("Anna - Packed.zip"), path("disc.cdg"), path("broken.mid"),
            path("Anna - Packed.zip")});
  Work();
  namespace column = catalogue::karaoke;
  const catalogue::track_table& songs = Karaoke();
  ASSERT_EQ(songs.Rows(), 3);
  EXPECT_EQ(songs.Cell(1, column::kTitle), "Counting");
  EXPECT_EQ(songs.Cell(2, column::kArtist), "Anna");
  EXPECT_EQ(songs.Cell(2, column::kFilename), path("Anna - Packed.zip"));
  EXPECT_EQ(songs.Cell(3, column::kFilename), path("disc.mp3"));
  EXPECT_EQ(kept_.size(), 1U);
  EXPECT_TRUE(files_.Content(folder_ / "tlvkaraoke.ndx"));
  EXPECT_EQ(Music().Rows(), 0);
  AddSongs({path("disc.mp3")});
  Work();
  EXPECT_EQ(songs.Rows(), 3) << "a second row";
}

TEST_F(TablesTest, AMidiSongComesToTheKaraokeTableWhateverListIsMeant) {
  StartUp();
  Write("notes.kar", karaoke::testing::FileBytes(
                         {karaoke::testing::UsualHead().Name("Words").Text(0, "@TCounting").End(960)}));
  const std::string song = (folder_ / "notes.kar").string();
  Write("l.m3u", song + "\n");
  station_->Collections().Intake().Add({.list = ListId::Catalogue, .paths = {song}}, nullptr);
  Work();
  ASSERT_EQ(Karaoke().Rows(), 1);
  EXPECT_EQ(Karaoke().Cell(1, catalogue::karaoke::kTitle), "Counting");
  EXPECT_TRUE(files_.Content(folder_ / "tlvkaraoke.ndx"));
  Karaoke().Clear();
  station_->Collections().Intake().Add({.list = ListId::Playlist1,
                                        .source = IntakeOrder::Source::Opened,
                                        .paths = {(folder_ / "l.m3u").string()}},
                                       nullptr);
  Work();
  EXPECT_EQ(Karaoke().Rows(), 1);
  EXPECT_EQ(Music().Rows() + Playlist(1).Rows(), 0);
}

TEST_F(TablesTest, RowsComeBackAtTheirPlacesTheNewestFirst) {
  StartUp();
  AddTracks({"1", "2", "3", "4", "5", "6"});
  const auto names = [](const catalogue::track_table& table) {
    std::string all;
    for (int row = 1; row <= table.Rows(); ++row) {
      all += fs::path(table.Cell(row, catalogue::track::kFilename)).filename().string();
    }
    return all;
  };
  EXPECT_EQ(station_->Collections().Removed().Remove(ListId::Catalogue, {5, 1, 2, 2, 9}), 3);
  EXPECT_EQ(names(Music()), "346");
  const int rows[] = {1, 2, 3};
  catalogue::AppendRows(Playlist(1), Music(), rows);
  station_->Collections().Removed().Remove(ListId::Playlist1, {2});
  Work();
  EXPECT_EQ(files_.Content(folder_ / "tlv.ndx"), IndexOf({"3", "4", "6"}));
  EXPECT_EQ(station_->Collections().Removed().Undo()->list, ListId::Playlist1);
  EXPECT_EQ(names(Playlist(1)), "346");
  EXPECT_EQ(station_->Collections().Removed().Undo()->rows, 3);
  EXPECT_EQ(names(Music()), "123456");
  EXPECT_FALSE(station_->Collections().Removed().Undo());
  Work();
  EXPECT_EQ(files_.Content(folder_ / "tlv.ndx"), IndexOf({"1", "2", "3", "4", "5", "6"}));
}

TEST_F(TablesTest, RowsComeBackWhereTheirNeighboursWentAndNoFileTwice) {
  StartUp();
  AddTracks({"1", "2", "3", "4", "5"});
  catalogue::track_table& table = Music();
  station_->Collections().Removed().Remove(ListId::Catalogue, {3, 5});
  const catalogue::track_table shorter = table;  // 1 2 4
  table.InsertFrom(1, shorter, 3);               // 4 1 2 4
  table.RemoveRow(4);
  AddTracks({"5"});  // it was added again: 4 1 2 5
  const auto back = station_->Collections().Removed().Undo();
  EXPECT_EQ(back->rows, 1);
  EXPECT_EQ(back->known, 1);
  EXPECT_EQ(back->first_row, 4);
  EXPECT_EQ(table.Cell(4, catalogue::track::kFilename), (folder_ / "3").string());
  EXPECT_EQ(table.Rows(), 5);
}

TEST_F(TablesTest, WhatWasTakenOutLongAgoIsForgotten) {
  StartUp();
  for (int step = 0; step <= 60; ++step) {
    AddTracks({"1"});
    station_->Collections().Removed().Remove(ListId::Catalogue, {1});
  }
  int steps = 0;
  while (station_->Collections().Removed().Undo()) ++steps;
  EXPECT_EQ(steps, 50);
}

TEST_F(TablesTest, ATrackOfTheCatalogueLeavesTheMp3BesideItAlone) {
  StartUp();
  for (const char* name : {"song.ogg", "song.mp3"}) Write(name);
  AddTracks({"song.ogg"});
  Delete({1});
  Work();
  EXPECT_TRUE(Exists("song.mp3"));
}

TEST_F(TablesTest, ARowTravelsToAPlaylistWithItsHiddenCells) {
  StartUp();
  AddTracks({"1.mp3"});
  Music().SetCell(1, catalogue::track::kStartMixPoint, "1.500");
  const int rows[] = {1};
  catalogue::AppendRows(Playlist(3), Music(), rows);
  EXPECT_EQ(Playlist(3).Cell(1, catalogue::track::kStartMixPoint), "1.500");
  EXPECT_EQ(Playlist(1).Rows() + Playlist(2).Rows(), 0);
}

TEST_F(TablesTest, BothIndexesAreReadAndReported) {
  Write("TLV.NDX", "short\r\n");
  Write("tlvkaraoke.ndx", "A\tT\t\tG\t03:45\ta.kar\r\nA\r\nB\r\n");
  StartUp();
  EXPECT_EQ(Karaoke().Cell(1, catalogue::karaoke::kFilename), "a.kar");
  EXPECT_EQ(Music().Rows(), 0);
  EXPECT_EQ(station_->Collections().Music().Loaded().Skipped(), 1);
  EXPECT_EQ(station_->Collections().Karaoke().Loaded().Skipped(), 2);
  EXPECT_EQ(station_->View().notice, "2 damaged rows of the karaoke catalogue were left out.");
}

TEST_F(TablesTest, AChosenLanguageIsStoredAndSpoken) {
  engine_.BreakDevice(2);
  StartUp();
  station_->Language().Choose(1);
  station_->Outputs().Set(3, {2, 0});
  Settle();
  workers_.RunAll();
  Settle();
  EXPECT_EQ(Stored("Language", "Current"), "1");
  EXPECT_EQ(station_->Language().StringBase(), 1000);
  EXPECT_TRUE(station_->View().notice.starts_with("De geluidsuitgang \"Phones\" kan niet worden geopend."));
  station_->Language().Choose(2);
  EXPECT_EQ(Stored("Language", "Current"), "2");
  EXPECT_EQ(station_->Language().StringBase(), 4000);
  station_->Language().Choose(3);
  EXPECT_EQ(Stored("Language", "Current"), "0") << "there is no such language";
}

}  // namespace
}  // namespace app
