// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "app/WorkstationView.h"
#include "app/tests/Evening.h"

namespace app {
namespace {

using Names = std::vector<std::string>;

class AddFilesTest : public testing::Evening {
 protected:
  AddFilesTest() {
    for (const char* file : {"a.mp3", "b.mp3", "c.flac"}) tags_.AddFile(file);
    StartUp();
  }
  void Add(Names files) { Give({.list = ListId::Catalogue, .paths = std::move(files)}); }
  void Give(IntakeOrder order) {
    station_->Collections().Intake().Add(std::move(order), [this](const IntakeOutcome& outcome) {
      rows_ = outcome.rows;
      refused_ = outcome.refused;
      outcome_ = outcome;
      ++reports_;
    });
  }
  void Work() {
    while (workers_.RunOne()) station_->PumpWindow();
  }
  [[nodiscard]] Names Files() {
    Names files;
    for (int row = 1; row <= Music().Rows(); ++row) {
      files.emplace_back(Music().Cell(row, catalogue::track::kFilename));
    }
    return files;
  }
  [[nodiscard]] std::optional<std::string> SavedIndex() const { return files_.Content(folder_ / "tlv.ndx"); }

  int rows_ = -1;
  int reports_ = 0;
  Names refused_;
  IntakeOutcome outcome_;
};

TEST_F(AddFilesTest, RowsAreAppendedInTheOrderGivenAndTheIndexIsSaved) {
  Add({"c.flac", "a.mp3"});
  Work();
  EXPECT_EQ(Files(), (Names{"c.flac", "a.mp3"}));
  EXPECT_EQ(rows_, 2);
  EXPECT_EQ(SavedIndex(), "\tc\t00:00\tc.flac\t\t\t\t\t\t\t\t\t\r\n\ta\t00:00\ta.mp3\t\t\t\t\t\t\t\t\t\r\n");
}

TEST_F(AddFilesTest, AFileThatCannotBeAnalysedIsRefusedWithASentence) {
  Add({"none.mp3"});
  Work();
  EXPECT_EQ(rows_, 0);
  EXPECT_EQ(SavedIndex(), std::nullopt) << "nothing was added";
  Add({"a.mp3", "none.mp3", "b.mp3"});
  Work();
  EXPECT_EQ(Files(), (Names{"a.mp3", "b.mp3"}));
  EXPECT_EQ(refused_, Names{"There is no file \"none.mp3\"."});
}

TEST_F(AddFilesTest, AFileThatIsThereGetsNoSecondRow) {
  Add({"a.mp3"});
  Work();
  Add({"a.mp3", "b.mp3", "b.mp3"});
  Work();
  EXPECT_EQ(Files(), (Names{"a.mp3", "b.mp3"}));
  EXPECT_EQ(rows_, 1);
  EXPECT_TRUE(refused_.empty());
}

TEST_F(AddFilesTest, BatchesFollowEachOther) {
  Add({"a.mp3"});
  Add({"a.mp3", "b.mp3"});
  EXPECT_EQ(station_->Collections().Intake().Progress(ListId::Catalogue).total, 3);
  Work();
  EXPECT_EQ(Files(), (Names{"a.mp3", "b.mp3"}));
  EXPECT_EQ(reports_, 2);
  EXPECT_EQ(station_->Collections().Intake().Progress(ListId::Catalogue).total, 0);
}

TEST_F(AddFilesTest, EachFileIsAJobSoThatOtherWorkGetsItsTurn) {
  Add({"a.mp3", "b.mp3", "c.flac"});
  bool ran = false;
  workers_.Post([&ran] { ran = true; });
  workers_.RunOne();
  workers_.RunOne();
  EXPECT_TRUE(ran);
  EXPECT_LT(station_->Collections().Intake().Progress(ListId::Catalogue).done, 3);
}

TEST_F(AddFilesTest, AnIndexThatCannotBeWrittenIsTold) {
  files_.SetFull(true);
  Add({"a.mp3"});
  Work();
  Settle();
  EXPECT_NE(station_->View().notice.find("cannot be written"), std::string::npos);
  EXPECT_EQ(Files(), Names{"a.mp3"});
}

TEST_F(AddFilesTest, ShutDownSavesWhatNoWorkerHasSavedYet) {
  Add({"a.mp3"});
  while (reports_ == 0 && workers_.RunOne()) station_->PumpWindow();
  ASSERT_FALSE(SavedIndex());
  station_->ShutDown();
  EXPECT_TRUE(SavedIndex());
  const int saves = files_.Saves();
  workers_.RunAll();
  EXPECT_EQ(files_.Saves(), saves);
}

TEST_F(AddFilesTest, AWorkerThatComesAfterTheEndTouchesNothing) {
  Add({"a.mp3", "b.mp3"});
  workers_.RunOne();
  const int reads = tags_.Reads();
  station_.reset();
  workers_.RunAll();
  EXPECT_EQ(tags_.Reads(), reads);
  EXPECT_EQ(reports_, 0);
}

/// A stick with folders on it.
class AddFoldersTest : public AddFilesTest {
 protected:
  AddFoldersTest() {
    std::filesystem::remove_all(stick_);
    std::filesystem::remove_all(home_);
    std::filesystem::create_directories(home_);
    folder_ = home_;
    Restart();
  }
  ~AddFoldersTest() override {
    std::filesystem::permissions(stick_ / "locked", std::filesystem::perms::owner_all, error_);
    std::filesystem::remove_all(stick_);
    std::filesystem::remove_all(home_);
  }
  void Restart() {
    station_.reset();
    StartUp();
  }
  std::string Write(const std::string& name) {
    const std::filesystem::path path = stick_ / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << "x";
    tags_.AddFile(path.string());
    return path.string();
  }
  /// Names of the list's files below the stick.
  Names NamesOf(const catalogue::track_table& table, int column = catalogue::track::kFilename) {
    Names names;
    for (int row = 1; row <= table.Rows(); ++row) {
      names.push_back(std::filesystem::path(table.Cell(row, column)).lexically_relative(stick_).string());
    }
    return names;
  }
  std::filesystem::path stick_ = std::filesystem::path(::testing::TempDir()) / "a-stick";
  std::filesystem::path home_ = std::filesystem::path(::testing::TempDir()) / "a-home-of-lists";
  std::error_code error_;
};

TEST_F(AddFoldersTest, AFolderGivesAllThatDecksPlayAndNothingElse) {
  for (const char* name : {"b.mp3", "a.WAV", "notes.txt", "song.kar", "cd/1.m4a", "cd/.hidden/2.ogg",
                           ".Trash-1000/gone.mp3", "._b.mp3"}) {
    Write(name);
  }
  std::filesystem::create_directory_symlink(stick_, stick_ / "cd" / "loop");
  Add({stick_.string()});
  Work();
  EXPECT_EQ(NamesOf(Music()), (Names{"cd/.hidden/2.ogg", "cd/1.m4a", "a.WAV", "b.mp3"}));
  EXPECT_EQ(outcome_.left_out, 0);
  EXPECT_TRUE(SavedIndex());
}

TEST_F(AddFoldersTest, AFolderOfSongsComesToTheKaraokeTableAndOneOfMusicIntoAPlaylistAtItsPlace) {
  for (const char* name : {"A.CDG", "A.MP3", "packed.zip", "music.flac"}) Write(name);
  Give({.list = ListId::Karaoke, .paths = {stick_.string()}});
  Work();
  EXPECT_EQ(NamesOf(Karaoke(), catalogue::karaoke::kFilename), (Names{"A.MP3", "packed.zip"}));
  for (const char* file : {"first.mp3", "last.mp3"}) {
    Playlist(2).SetCell(Playlist(2).AddRow(), catalogue::track::kFilename, file);
  }
  Give({.list = ListId::Playlist2, .before = 2, .paths = {stick_.string()}});
  Playlist(2).InsertFrom(1, Playlist(2), 2);  // rows move while files are analysed
  Work();
  ASSERT_EQ(Playlist(2).Rows(), 5);
  EXPECT_EQ(Playlist(2).Cell(2, catalogue::track::kFilename), "first.mp3");
  EXPECT_EQ(Playlist(2).Cell(4, catalogue::track::kFilename), (stick_ / "music.flac").string());
  EXPECT_EQ(Music().Rows(), 2) << "what is dropped on a list is new to the catalogue too";
}

TEST_F(AddFoldersTest, AFolderThatIsGoneIsNamed) {
  std::filesystem::create_directories(stick_ / "empty");
  Add({(stick_ / "empty").string(), (stick_ / "none").string()});
  std::filesystem::remove_all(stick_ / "empty");
  Work();
  EXPECT_EQ(outcome_.left_out, 2);
}

TEST_F(AddFoldersTest, WhatIsStoppedKeepsWhatWasDone) {
  for (const char* name : {"1.mp3", "2.mp3", "3.mp3"}) Write(name);
  Add({stick_.string()});
  Add({"a.mp3"});
  while (station_->Collections().Intake().Progress(ListId::Catalogue).looking ||
         station_->Collections().Intake().Progress(ListId::Catalogue).done < 2) {
    ASSERT_TRUE(workers_.RunOne());
  }
  station_->Collections().Intake().Stop(ListId::Catalogue);
  Work();
  EXPECT_EQ(NamesOf(Music()), (Names{"1.mp3", "2.mp3"}));
  EXPECT_TRUE(outcome_.stopped);
  EXPECT_EQ(station_->Collections().Intake().Progress(ListId::Catalogue).total, 0);
}

TEST_F(AddFoldersTest, AFileThatComesInByTwoWaysAtOnceGetsOneRow) {
  const std::string file = Write("1.mp3");
  Add({stick_.string()});
  Give({.list = ListId::Playlist1, .paths = {file}});
  Work();
  EXPECT_EQ(NamesOf(Music()), Names{"1.mp3"});
  EXPECT_EQ(NamesOf(Playlist(1)), Names{"1.mp3"});
}

TEST_F(AddFoldersTest, WhatIsHandedOverJustBeforeQuitIsGoneOnWithNextTime) {
  Write("1.mp3");
  const std::string list = Write("l.m3u");
  std::ofstream(list) << (stick_ / "1.mp3").string() << "\n";
  Add({stick_.string()});
  Give({.list = ListId::Playlist3, .before = 1, .paths = {list}});
  workers_.RunOne();
  station_->ShutDown();
  const auto kept = files_.Content(home_ / "tlv.adding");
  ASSERT_TRUE(kept);
  std::ofstream(home_ / "tlv.adding", std::ios::binary) << *kept;
  Restart();
  Work();
  EXPECT_EQ(NamesOf(Music()), Names{"1.mp3"});
  EXPECT_EQ(NamesOf(Playlist(3)), Names{"1.mp3"});
  EXPECT_FALSE(std::filesystem::exists(home_ / "tlv.adding")) << "and once only";
}

TEST(IntakeOrderTest, OrdersGoThereAndBackAndWhatIsNoneIsPassedOver) {
  const IntakeOrder music{.list = ListId::Catalogue, .paths = {"/a b/c.mp3", "/d"}};
  const IntakeOrder opened{ListId::Playlist2, IntakeOrder::Source::Opened, 7, {}, {"/l.m3u", "/bad\nname"}};
  std::string text =
      OrdersText({std::make_shared<const IntakeOrder>(music), std::make_shared<const IntakeOrder>(opened)});
  EXPECT_EQ(
      ReadOrders(text),
      (std::vector<IntakeOrder>{music, {ListId::Playlist2, IntakeOrder::Source::Opened, 7, {}, {"/l.m3u"}}}));
  for (const char* bad :
       {"9 0 dropped\r\n\tx\r\n", "0 -1 dropped\r\n\tx\r\n", "0 99999999999 opened\r\n\tx\r\n", "\tx\r\n",
        "0 0 thrown\r\n\tx\r\n", "0 0 dropped\r\n\tx", "0 0 dropped\r\n\tx\ny\r\n", "0 0 dropped\r\n\r\n"}) {
    EXPECT_TRUE(ReadOrders(bad).empty()) << bad;
  }
}

}  // namespace
}  // namespace app
