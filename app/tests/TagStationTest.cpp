// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tags/TagStation.h"

#include <gtest/gtest.h>

#include <fstream>

#include "app/singers/SingerStation.h"
#include "app/tests/Evening.h"
#include "catalogue/AnalysisParts.h"
#include "catalogue/testing/FakeTagEditor.h"
#include "catalogue/testing/MemorySideStore.h"

namespace app::testing {
namespace {

namespace track = catalogue::track;
using catalogue::PlannedName;
using catalogue::TagEdit;
using catalogue::TagField;
using catalogue::TagSheet;
using Report = TagStation::Report;

/// Ten files f0.mp3 to f9.mp3 in the catalogue, the first also in playlist 2.
class TagStationTest : public Evening {
 protected:
  TagStationTest() {
    Ports ports{engine_, engine_, tags_, settings_, files_, workers_, clock_, &mixer_, &visualisation_};
    ports.side_store = &store_;
    ports.tag_editor = &editor_;
    station_.emplace(ports, support::ProgramFolder(folder_), Workstation::Conducting::ByHand);
    station_->StartUp();
    for (int i = 0; i < 10; ++i) {
      const std::string path = PathOf(i);
      TagSheet sheet;
      sheet[TagField::Artist] = "Old";
      sheet[TagField::Title] = "Title " + std::to_string(i);
      editor_.AddFile(path, sheet);
      engine_.AddFile(path, {.seconds = 10});
      const std::string_view cells[] = {"Old", sheet[TagField::Title], "01:00", path};
      Music().AddRow(cells);
    }
    Playlist(2).AppendFrom(Music(), 1);
    Work();
  }
  static std::string PathOf(int i) { return "f" + std::to_string(i) + ".mp3"; }
  TagStation& Tags() { return station_->Tags(); }
  void Work() {
    for (int i = 0; i < 4; ++i) {
      workers_.RunAll();
      Settle();
      station_->PumpWindow();
      Tags().Follow(station_->View(), "");
    }
  }
  TagStation::Done Keep() {
    return [this](const Report& report) { report_ = report; };
  }
  void SetArtist(const std::string& artist, int files = 10) {
    std::vector<TagStation::Change> changes;
    for (int i = 0; i < files; ++i) {
      TagEdit edit;
      edit[TagField::Artist] = artist;
      changes.push_back({PathOf(i), edit});
    }
    Tags().Write(std::move(changes), nullptr, Keep());
  }
  std::string Artist(int row) { return std::string(Music().Cell(row, track::kArtist)); }
  static PlannedName NameFor(const std::string& from, const std::string& to) {
    return {from, to, PlannedName::State::Renamed, false};
  }

  catalogue::testing::MemorySideStore store_;
  catalogue::testing::FakeTagEditor editor_{tags_};
  Report report_;
};

TEST_F(TagStationTest, RowsFollowWhatWasWrittenAndAFileThatRefusesKeepsNoOtherBack) {
  editor_.SetProtected(PathOf(3));
  SetArtist("New");
  EXPECT_EQ(editor_.Writes(), 0) << "a worker writes";
  Work();
  EXPECT_EQ(report_.done, 9U);
  ASSERT_EQ(report_.sentences.size(), 1U);
  EXPECT_EQ(Artist(1), "New");
  EXPECT_EQ(Artist(4), "Old");
  EXPECT_EQ(Artist(10), "New");
  EXPECT_EQ(Playlist(2).Cell(1, track::kArtist), "New");
  EXPECT_EQ(Music().Cell(1, track::kTitle), "Title 0") << "nobody touched it";
}

TEST_F(TagStationTest, ABatchIsTakenBackAtOnceTheNewestFirst) {
  SetArtist("New");
  Work();
  SetArtist("Newer", 2);
  Work();
  EXPECT_EQ(Tags().CanUndo(), 2U);
  Tags().Undo(Keep());
  Work();
  EXPECT_EQ(Artist(1), "New");
  Tags().Undo(Keep());
  Work();
  EXPECT_EQ(report_.done, 10U);
  EXPECT_EQ(Artist(1) + Artist(10), "OldOld");
  EXPECT_EQ(editor_.SheetOf(PathOf(9))[TagField::Artist], "Old");
  EXPECT_EQ(Tags().CanUndo(), 0U);
}

TEST_F(TagStationTest, WhatCouldNotBeTakenBackCanBeTriedAgain) {
  SetArtist("New");
  Work();
  editor_.SetProtected(PathOf(3));
  Tags().Undo(Keep());
  Work();
  EXPECT_EQ(Artist(4), "New");
  EXPECT_EQ(Artist(5), "Old");
  ASSERT_EQ(Tags().CanUndo(), 1U);
  editor_.LiftProtection();
  Tags().Undo(Keep());
  Work();
  EXPECT_EQ(Artist(4), "Old");
  EXPECT_EQ(Tags().CanUndo(), 0U);
}

TEST_F(TagStationTest, WhatWasWrittenWhenTheProgramEndsIsInTheIndex) {
  SetArtist("New");
  workers_.RunOne();  // a turn of eight files, whose answer the window never takes
  EXPECT_EQ(Artist(8), "Old");
  station_->ShutDown();
  EXPECT_EQ(Artist(8), "New");
  EXPECT_EQ(Artist(9), "Old");
}

TEST_F(TagStationTest, AWritingThatIsStoppedIsTakenBackAsFarAsItCame) {
  SetArtist("New");
  workers_.RunOne();  // a turn of eight files
  Tags().Stop();
  Work();
  EXPECT_TRUE(report_.stopped);
  EXPECT_EQ(report_.done, 8U);
  EXPECT_EQ(Artist(9), "Old");
  Tags().Undo(Keep());
  Work();
  EXPECT_EQ(Artist(8), "Old");
}

TEST_F(TagStationTest, MarksOfAFileGoAlongWithItsTagAndItsName) {
  catalogue::FileMarks marks;
  marks.start = catalogue::PointBy::Hand;
  ASSERT_TRUE(store_.Write(PathOf(0), {1, 1}, catalogue::SidePart::Marks, catalogue::PackMarks(marks)));
  editor_.OnChanged([this](const std::string& path) { store_.SetStamp(path, {1, 2}); });
  SetArtist("New", 1);
  Work();
  EXPECT_TRUE(store_.Read(PathOf(0), {1, 2}, catalogue::SidePart::Marks));
  Tags().Rename({NameFor(PathOf(0), "New - Title 0.mp3")}, Keep());
  Work();
  EXPECT_TRUE(store_.Read("New - Title 0.mp3", {1, 2}, catalogue::SidePart::Marks));
  EXPECT_EQ(Music().Cell(1, track::kFilename), "New - Title 0.mp3");
  EXPECT_EQ(Playlist(2).Cell(1, track::kFilename), "New - Title 0.mp3");
  Tags().Undo(Keep());
  Work();
  EXPECT_EQ(editor_.SheetOf("New - Title 0.mp3")[TagField::Artist], "Old")
      << "the journal knows its new name";
}

TEST_F(TagStationTest, AFileOnADeckGetsItsNameWhenTheDeckLetsItGo) {
  Load(1, PathOf(0));
  Work();
  Tags().Rename({NameFor(PathOf(0), "a.mp3x"), NameFor(PathOf(1), PathOf(2)), NameFor(PathOf(3), "d.mp3")},
                Keep());
  Work();
  EXPECT_EQ(report_.renamed.size(), 1U);
  EXPECT_EQ(report_.sentences.size(), 2U) << "one waits, one would be over another file";
  EXPECT_TRUE(editor_.Has(PathOf(0)) && editor_.Has(PathOf(1)) && editor_.Has("d.mp3"));
  Load(1, PathOf(5));
  Work();
  EXPECT_TRUE(editor_.Has("a.mp3x"));
  EXPECT_EQ(Music().Cell(1, track::kFilename), "a.mp3x");
}

TEST_F(TagStationTest, WhatADeckTakesWhileHundredsAreRenamedWaits) {
  std::vector<PlannedName> names;
  for (int i = 0; i < 10; ++i) names.push_back(NameFor(PathOf(i), "g" + std::to_string(i) + ".mp3"));
  Tags().Rename(names, Keep());
  Load(1, PathOf(9));
  Settle();
  Tags().Follow(station_->View(), "");
  Work();
  EXPECT_EQ(report_.renamed.size(), 9U);
  EXPECT_EQ(report_.sentences.size(), 1U);
  EXPECT_TRUE(editor_.Has(PathOf(9)));
  EXPECT_EQ(station_->View().decks[0].filename, PathOf(9));
  engine_.AddFile("g5.mp3", {.seconds = 10});
  Load(1, "g5.mp3");
  Work();
  EXPECT_TRUE(editor_.Has("g9.mp3"));
}

TEST_F(TagStationTest, TurnsOfSingersAndRowsThatWereTakenOutFollowAName) {
  SingerStation& station = station_->Singers();
  station.Do(&SingerStation::Add, "Anna");
  Settle();
  singers::Wish wish;
  wish.filename = PathOf(0);
  station.Do(&SingerStation::Ask, station.View().sheet->turns->Singers()[0].id, wish);
  Settle();
  ASSERT_EQ(station_->Collections().Removed().Remove(ListId::Playlist2, {1}), 1);
  Tags().Rename({NameFor(PathOf(0), "new.mp3")}, Keep());
  Work();
  EXPECT_EQ(station.View().sheet->turns->Singers()[0].wishes[0].filename, "new.mp3");
  ASSERT_TRUE(station_->Collections().Removed().Undo());
  EXPECT_EQ(Playlist(2).Cell(1, track::kFilename), "new.mp3");
}

TEST_F(TagStationTest, TheBlockOfMixingTagsIsCarriedOverAndItsTempoGoesAlong) {
  TagSheet sheet = editor_.SheetOf(PathOf(0));
  sheet[TagField::Comment] = "mine\r\nSMP\r\n1.000\r\nBPM\r\n120.00";
  editor_.AddFile(PathOf(0), sheet);
  std::string seen;
  Tags().Read(
      {PathOf(0)}, [&](const std::string&, const TagSheet& read) { seen = read[TagField::Comment]; }, Keep());
  Work();
  EXPECT_EQ(seen, "mine");
  TagEdit edit;
  edit[TagField::Comment] = "yours";
  edit[TagField::Bpm] = "127.5";
  Tags().Write({{PathOf(0), edit}}, nullptr, Keep());
  Work();
  EXPECT_EQ(editor_.SheetOf(PathOf(0))[TagField::Comment], "yours\r\nSMP\r\n1.000\r\nBPM\r\n127.5");
  EXPECT_EQ(Music().Cell(1, track::kBpm), "127.5");
  sheet = editor_.SheetOf(PathOf(0));
  sheet[TagField::Comment] = "yours\r\nSMP\r\n2.000";
  editor_.AddFile(PathOf(0), sheet);  // an analysis
  Tags().Undo(Keep());
  Work();
  EXPECT_EQ(editor_.SheetOf(PathOf(0))[TagField::Comment], "mine\r\nSMP\r\n2.000")
      << "the newest values stay";
}

TEST_F(TagStationTest, ASongTakesItsPictureAlong) {
  const auto folder = std::filesystem::path(::testing::TempDir()) / "song-and-picture";
  std::filesystem::create_directories(folder);
  const std::string sound = (folder / "Song.mp3").string(), picture = (folder / "song.CDG").string();
  std::ofstream(picture) << "x";
  editor_.AddFile(sound, {});
  editor_.AddFile(picture, {});
  Tags().Rename({NameFor(sound, (folder / "New.mp3").string())}, Keep());
  Work();
  std::filesystem::remove_all(folder);
  EXPECT_TRUE(editor_.Has((folder / "New.mp3").string()) && editor_.Has((folder / "New.CDG").string()));
}

TEST_F(TagStationTest, AReadingIsGivenUpForTheNextOne) {
  std::vector<std::string> read;
  const auto took = [&](const std::string& path, const TagSheet&) { read.push_back(path); };
  Tags().Read({PathOf(0), PathOf(1)}, took, Keep());
  Tags().Read({PathOf(2), "gone.mp3"}, took, Keep());
  Work();
  EXPECT_EQ(read, std::vector<std::string>{PathOf(2)});
  EXPECT_EQ(report_.sentences.size(), 1U);
  EXPECT_FALSE(Tags().Busy());
}

}  // namespace
}  // namespace app::testing
