// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WorkstationView.h"
#include "app/lists/ListStation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "app/tests/Evening.h"
#include "catalogue/IndexFile.h"

namespace app {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Names = std::vector<std::string>;

/// A program folder on the disk, with playlists in it.
class ListStationTest : public testing::Evening {
 protected:
  ListStationTest() {
    folder_ = std::filesystem::path(::testing::TempDir()) / "lists-of-an-evening";
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    for (const char* file : {"a.mp3", "b.mp3", "c.flac"}) tags_.AddFile(file);
  }
  ~ListStationTest() override { std::filesystem::remove_all(folder_); }

  std::string Write(const std::string& name, const std::string& text) {
    std::filesystem::create_directories((folder_ / name).parent_path());
    std::ofstream(folder_ / name, std::ios::binary) << text;
    return (folder_ / name).string();
  }
  /// What stands in playlist 1 afterwards.
  Names Open(const std::string& path) {
    if (!station_) StartUp();
    Give({.list = ListId::Playlist1, .source = IntakeOrder::Source::Opened, .paths = {path}});
    return FilesOf(Playlist(1));
  }
  void Give(IntakeOrder order) {
    station_->Collections().Intake().Add(
        std::move(order), [this](const IntakeOutcome& outcome) { refused_ = outcome.refused; });
    Work();
  }
  void Work() {
    for (int i = 0; i < 3; ++i) {
      workers_.RunAll();
      station_->PumpWindow();
      Settle();
    }
  }
  static Names FilesOf(const catalogue::track_table& table) {
    Names files;
    for (int row = 1; row <= table.Rows(); ++row) {
      files.emplace_back(table.Cell(row, catalogue::track::kFilename));
    }
    return files;
  }
  Names refused_;
};

std::string Line(const std::string& file) {
  return "Artist\tTitle\t01:40\t" + file + "\t\t\t\t\t\t\t\t\t61.5\r\n";
}

TEST_F(ListStationTest, ATableIsAppendedWholeEachTimeItIsOpened) {
  const std::string path = Write("a.TPL", Line("x.mp3") + Line("y.mp3"));
  EXPECT_THAT(Open(path), ElementsAre("x.mp3", "y.mp3"));
  EXPECT_THAT(Open(path), ElementsAre("x.mp3", "y.mp3", "x.mp3", "y.mp3"));
  EXPECT_EQ(Playlist(1).Cell(4, catalogue::track::kEndMixPoint), "61.5");
  EXPECT_EQ(tags_.Reads(), 0);
  EXPECT_EQ(Music().Rows(), 0) << "a playlist never changes the catalogue";
}

TEST_F(ListStationTest, AListOfPathsGoesThroughTheAddOneFileStep) {
  const std::string path = Write(
      "l.m3u8", "#EXTM3U\r\n#EXTINF\r\nb.mp3\r\n\"a.mp3\"\r\nC:\\Music\\q.mp3\nhttp://x/y.mp3\na.mp3\rb.mp3");
  EXPECT_THAT(Open(path), ElementsAre("b.mp3", "a.mp3", "b.mp3"));
  EXPECT_THAT(refused_, ElementsAre(HasSubstr("\"a.mp3\""), HasSubstr("q.mp3"), HasSubstr("http://x/y.mp3")));
}

TEST_F(ListStationTest, OnlyWhatIsDescribedIsAdded) {
  EXPECT_THAT(Open("c.flac"), ElementsAre("c.flac"));
  tags_.AddFile("w.wav");
  EXPECT_THAT(Open("w.wav"), ElementsAre("c.flac"));
  EXPECT_THAT(Open(Write("comments.m3u", "#a\n#b\n")), ElementsAre("c.flac"));
  EXPECT_THAT(Open("/no/such.m3u"), ElementsAre("c.flac"));
  EXPECT_EQ(refused_.size(), 1u);
}

TEST_F(ListStationTest, ATableThatIsNoneIsToldApartFromADamagedOne) {
  EXPECT_TRUE(Open(Write("really.tpl", "#EXTM3U\n/music/a.mp3\n")).empty());
  EXPECT_THAT(refused_, ElementsAre(HasSubstr(".m3u")));
  EXPECT_THAT(Open(Write("damaged.tpl", Line("x.mp3") + "nonsense\r\n")), ElementsAre("x.mp3"));
  EXPECT_THAT(refused_, ElementsAre(HasSubstr("1 line of")));
}

TEST_F(ListStationTest, NamesAreMadeAsTheSettingsSay) {
  Store("Tags", "FileFormat", "1");
  Store("Tags", "SplitCharacter", "_");
  tags_.AddFile("Title_Artist.mp3");
  Open("Title_Artist.mp3");
  Open(Write("l.m3u", "Title_Artist.mp3\n"));
  for (const int row : {1, 2}) {
    EXPECT_EQ(Playlist(1).Cell(row, catalogue::track::kArtist), "Artist") << row;
    EXPECT_EQ(Playlist(1).Cell(row, catalogue::track::kTitle), "Title") << row;
  }
}

TEST_F(ListStationTest, PlaylistsAndFilesDroppedOnAListComeTogetherInTheirOrder) {
  StartUp();
  Open(Write("old.tpl", Line("x.mp3") + Line("y.mp3")));
  tags_.AddFile("w.wav");
  Give({.list = ListId::Playlist1,
        .before = 2,
        .paths = {"a.mp3", Write("b.tpl", Line("t.mp3")), Write("c.M3U8", "c.flac\n"), "w.wav"}});
  EXPECT_THAT(FilesOf(Playlist(1)), ElementsAre("x.mp3", "a.mp3", "t.mp3", "c.flac", "w.wav", "y.mp3"));
  EXPECT_THAT(FilesOf(Music()), ElementsAre("a.mp3", "w.wav")) << "only what was dropped itself";
}

TEST_F(ListStationTest, MixingTagsAreReadForTheRowsThatASearchShows) {
  catalogue::FileTags tags;
  tags.user_items = {{"SMP", "1.500"}, {"PEA", "-3.00"}};
  tags_.AddFile("seen.mp3", tags);
  tags_.AddFile("other.mp3", tags);
  StartUp();
  catalogue::track_table& table = Music();
  for (const char* file : {"seen.mp3", "other.mp3"}) {
    table.AddRow(std::vector<std::string_view>{"", "", "", file, "120.00", "", "", "", "", "", "-5.00"});
  }
  for (int frame = 0; frame < 3; ++frame) station_->Lists().ShowRows({1});
  Work();
  EXPECT_EQ(table.Cell(1, catalogue::track::kStartMixPoint), "1.500");
  EXPECT_EQ(table.Cell(1, catalogue::track::kGain), "-5.00") << "found or set later than the tag was written";
  EXPECT_EQ(table.Cell(2, catalogue::track::kStartMixPoint), "") << "nobody saw it";
  EXPECT_EQ(tags_.Reads(), 1);
  EXPECT_EQ(files_.Content(folder_ / "tlv.ndx"), catalogue::IndexText(table));
  station_->Lists().ShowRows({});
  station_->Lists().ShowRows({1});
  Work();
  EXPECT_EQ(tags_.Reads(), 1) << "once a run";
}

TEST_F(ListStationTest, AFileOfTheCatalogueKeepsWhatItsRowSays) {
  StartUp();
  const std::string music = Write("known.mp3", "sound");
  Music().AddRow(std::vector<std::string_view>{"By hand", "", "", music});
  Open(Write("l.m3u", music + "\n"));
  EXPECT_EQ(Playlist(1).Cell(1, catalogue::track::kArtist), "By hand");
  EXPECT_EQ(tags_.Reads(), 0);
}

TEST_F(ListStationTest, AListIsSavedWholeOrASentenceSaysWhyNot) {
  StartUp();
  Open(Write("a.tpl", Line("x.mp3")));
  std::string failure = "none";
  const auto save = [&] {
    station_->Lists().SavePlaylist(1, "/lists/evening.tpl", [&](std::string told) { failure = told; });
    Work();
  };
  save();
  EXPECT_EQ(failure, "");
  EXPECT_EQ(files_.Content("/lists/evening.tpl"), Line("x.mp3"));
  files_.SetFull(true);
  save();
  EXPECT_THAT(failure, HasSubstr("not saved"));
}

TEST_F(ListStationTest, APlaylistThatIsSavedLastIsSavedThoughTheProgramCloses) {
  Open(Write("a.tpl", Line("x.mp3")));
  station_->Lists().SavePlaylist(2, "/lists/evening.tpl", nullptr);
  station_->Lists().SavePlaylist(1, "/lists/evening.tpl", nullptr);
  station_->ShutDown();
  EXPECT_EQ(files_.Content("/lists/evening.tpl"), Line("x.mp3")) << "in the order asked for";
}

TEST(EveningTest, ADayEndsAtSixInTheMorning) {
  const auto evening = [](int year, int month, int day, int hour) {
    std::tm time{};
    time.tm_year = year - 1900;
    time.tm_mon = month - 1;
    time.tm_mday = day;
    time.tm_hour = hour;
    return EveningOf(time);
  };
  EXPECT_EQ(evening(2026, 11, 21, 23), "2026-11-21");
  EXPECT_EQ(evening(2026, 11, 22, 5), "2026-11-21");
  EXPECT_EQ(evening(2026, 11, 22, 6), "2026-11-22");
  EXPECT_EQ(evening(2027, 1, 1, 0), "2026-12-31");
  EXPECT_EQ(evening(2028, 3, 1, 2), "2028-02-29");
}

class HistoryTest : public ListStationTest {
 protected:
  void Go(std::chrono::seconds time) {
    for (; time > 0s; time -= 1s) Advance(1s);
    Work();
  }
  [[nodiscard]] std::string History() const {
    return files_.Content(folder_ / "History" / (EveningOf(LocalTimeNow()) + ".tpl")).value_or("none");
  }
};

TEST_F(HistoryTest, ATrackIsNotedOnceItWasHeardForHalfAMinute) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  Go(29s);
  EXPECT_EQ(History(), "none");
  EXPECT_FALSE(station_->Lists().WasPlayed("a.mp3"));
  Go(2s);
  EXPECT_THAT(History(), HasSubstr("Artist of a.mp3\tTitle of a.mp3\t01:40\ta.mp3\t120.50"));
  EXPECT_TRUE(station_->Lists().WasPlayed("a.mp3"));
  Go(60s);
  EXPECT_EQ(History().find("a.mp3\t120"), History().rfind("a.mp3\t120")) << "and once only";
}

TEST_F(HistoryTest, AShortOneCountsFromItsHalfAndWhatIsListenedToDoesNot) {
  engine_.AddFile("jingle.mp3", {.seconds = 10});
  StartUp();
  Load(4, "b.mp3");
  Play(4);
  Load(2, "jingle.mp3");
  Play(2);
  Go(6s);
  EXPECT_THAT(History(), HasSubstr("jingle.mp3"));
  Go(40s);
  EXPECT_FALSE(station_->Lists().WasPlayed("b.mp3"));
}

TEST_F(HistoryTest, AnEveningGoesOnAfterARestart) {
  Write("History/" + EveningOf(LocalTimeNow()) + ".tpl", Line("earlier.mp3"));
  StartUp();
  Work();
  EXPECT_TRUE(station_->Lists().WasPlayed("earlier.mp3"));
  Load(1, "a.mp3");
  Play(1);
  Go(31s);
  EXPECT_THAT(History(), ::testing::AllOf(HasSubstr("earlier.mp3"), HasSubstr("a.mp3")));
}

TEST_F(HistoryTest, WhatCannotBeReadIsSetAsideAndTheEveningGoesOn) {
  const std::string tonight = "History/" + EveningOf(LocalTimeNow()) + ".tpl";
  Write(tonight + "/not a file", "of ours");
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  Go(31s);
  EXPECT_THAT(History(), HasSubstr("a.mp3"));
  EXPECT_TRUE(std::filesystem::exists(folder_ / (tonight + ".unreadable-1") / "not a file"));
}

TEST_F(HistoryTest, WhatNoWorkerHasSavedIsSavedAtTheEnd) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  for (int second = 0; second < 31; ++second) Advance(1s);
  station_->ShutDown();
  EXPECT_THAT(History(), HasSubstr("a.mp3"));
}

TEST_F(ListStationTest, ThePlaylistsOfTheLastRunGoOnAndAreWrittenWhenTheyChange) {
  Write("tlv.list2", Line("x.mp3") + "half a row\r\n" + Line("y.mp3"));
  const auto kept = [this](const char* name) { return files_.Content(folder_ / name).value_or("none"); };
  StartUp();
  EXPECT_THAT(FilesOf(Playlist(2)), ElementsAre("x.mp3", "y.mp3"));
  EXPECT_THAT(station_->View().notice, HasSubstr("playlist 2"));
  Work();
  EXPECT_EQ(kept("tlv.list2"), "none") << "nothing was changed, so the damaged row is still on the disk";
  Open(Write("a.TPL", Line("z.mp3")));
  station_->Lists().Follow();
  Work();
  EXPECT_EQ(kept("tlv.list1"), Line("z.mp3"));
  Playlist(2).RemoveRow(1);
  station_->ShutDown();
  EXPECT_EQ(kept("tlv.list2"), Line("y.mp3")) << "changed after the last frame";
  EXPECT_EQ(kept("tlv.list3"), "none");
}

TEST_F(ListStationTest, EveningsAreListedTheNewestFirst) {
  for (const char* name : {"History/2026-11-20.tpl", "History/2026-11-21.tpl", "History/notes.tpl"})
    Write(name, "");
  StartUp();
  Names evenings;
  station_->Lists().ListHistory([&](Names found) { evenings = std::move(found); });
  Work();
  EXPECT_THAT(evenings, ElementsAre("2026-11-21", "2026-11-20"));
}

TEST_F(ListStationTest, TheNewestWishForASearchWins) {
  StartUp();
  for (const char* title : {"one", "two", "three"}) {
    Music().AddRow(std::vector<std::string_view>{"", title});
  }
  TableSearch& search = station_->Lists().Search();
  for (const char* typed : {"t", "th", "thr"}) search.Look(typed);
  EXPECT_LE(workers_.Waiting(), 2u) << "what was typed meanwhile waits for the first answer";
  Work();
  ASSERT_NE(search.Shown(), nullptr);
  EXPECT_THAT(*search.Shown(), ElementsAre(3));
  search.Look("");
  search.Sort({catalogue::track::kTitle, catalogue::SortAs::Text, catalogue::SortDirection::Down});
  Work();
  EXPECT_THAT(*search.Shown(), ElementsAre(2, 3, 1));
  const auto answers = search.Answers();
  Music().AddRow(std::vector<std::string_view>{"", "zero"});
  search.Follow();
  Work();
  EXPECT_THAT(*search.Shown(), ElementsAre(4, 2, 3, 1));
  EXPECT_EQ(search.Answers(), answers + 1);
}

TEST_F(ListStationTest, RowsStayWhereTheyAreWhileTheirCellsAreFilledInUntilTheyAreSortedAgain) {
  namespace track = catalogue::track;
  StartUp();
  catalogue::track_table& table = Music();
  for (const char* file : {"a", "b", "c"}) table.AddRow(std::vector<std::string_view>{"", "", "", file, ""});
  TableSearch& search = station_->Lists().Search();
  search.Sort({track::kBpm, catalogue::SortAs::Number, catalogue::SortDirection::Up});
  Work();
  const auto follow = [&] {
    search.Follow();
    Work();
    return *search.Shown();
  };
  table.SetCell(3, track::kBpm, "100");
  EXPECT_THAT(follow(), ElementsAre(1, 2, 3));
  search.SortAgain();
  Work();
  EXPECT_THAT(*search.Shown(), ElementsAre(3, 1, 2));
  table.SetCell(2, track::kBpm, "90");
  EXPECT_THAT(follow(), ElementsAre(3, 1, 2));
  search.Sort({track::kBpm, catalogue::SortAs::Number, catalogue::SortDirection::Down});
  Work();
  EXPECT_THAT(*search.Shown(), ElementsAre(3, 2, 1));
  table.RemoveRow(1);
  EXPECT_THAT(follow(), ElementsAre(2, 1)) << "rows that go take their numbers with them";
}

TEST_F(ListStationTest, FilesOfAnOpenedPlaylistThatAreNotThereAreMarked) {
  StartUp();
  Open(Write("a.TPL", Line("/not/there.mp3")));
  Work();
  EXPECT_TRUE(station_->Collections().Missing().Has("/not/there.mp3"));
}

}  // namespace
}  // namespace app
