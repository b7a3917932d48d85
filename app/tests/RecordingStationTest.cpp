// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/recording/RecordingStation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "app/StationContext.h"
#include "app/WorkstationView.h"
#include "decks/testing/FakeRecorder.h"
#include "support/testing/FakeClock.h"
#include "support/testing/ManualExecutor.h"
#include "support/testing/MemoryFiles.h"
#include "support/testing/MemorySettings.h"
#include "support/testing/TemporaryFolder.h"

namespace app {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using namespace std::chrono_literals;

/// A station with two decks whose views are set by hand, and the words to use it.
class Recording : public ::testing::Test {
 protected:
  Recording() {
    view.outputs[0].device = 1;
    Run();
  }
  void Run() {
    for (int i = 0; i < 4; ++i) {  // each hands on to the other
      workers.RunAll();
      for (const Mailbox::Job& job : context.conductor->Take()) job();
      for (const Mailbox::Job& job : context.window->Take()) job();
      station.Tick(view);
    }
    workers.RunAll();
  }
  void Plays(std::size_t deck, const std::string& title, int volume) {
    DeckView& shown = view.decks[deck - 1];
    shown.loaded_state = DeckView::State::Playing;
    shown.loaded = "/music/" + title + ".mp3";
    if (shown.filename != "/music/coming.mp3") shown.filename = shown.loaded;
    shown.artist = "Artist";
    shown.title = title;
    shown.volume = volume;
    Run();
  }
  void Ends(std::size_t deck) {
    view.decks[deck - 1].loaded_state = DeckView::State::Ended;
    Run();
  }
  void At(std::chrono::microseconds heard) { recorder.progress.heard = heard; }
  void Choose(RecordingChoice::Files files_wanted, RecordingFormat format = RecordingFormat::Flac) {
    RecordingChoice choice = station.Choice();
    choice.files = files_wanted;
    choice.format = format;
    station.Choose(choice);
  }
  void Start() {
    station.Start();
    Run();
  }
  void Stop() {
    station.Stop();
    Run();
  }
  [[nodiscard]] std::string Saved(const std::string& name) const {
    return files.Content(folder.Native("\\Recordings") / name).value_or("");
  }

  static std::tm Evening() {
    std::tm time{};
    time.tm_year = 126;
    time.tm_mon = 10;
    time.tm_mday = 21;
    time.tm_hour = 20;
    time.tm_min = 5;
    return time;
  }

  support::testing::TemporaryFolder temporary;
  support::ProgramFolder folder{temporary.Path()};
  support::testing::MemorySettings store;
  support::Settings settings{store, folder};
  support::testing::MemoryFiles files;
  support::testing::ManualExecutor workers;
  support::testing::FakeClock clock;
  support::Sentences say;
  std::vector<std::string> told;
  StationContext context{folder,
                         settings,
                         files,
                         workers,
                         clock,
                         std::make_shared<WorkGate>(),
                         std::make_shared<Mailbox>(),
                         std::make_shared<Mailbox>(),
                         say,
                         [this](const support::Saying& sentence) { told.push_back(say(sentence)); },
                         nullptr};
  decks::testing::FakeRecorder recorder;
  WorkstationView view;
  RecordingStation station{context, &recorder, Evening};
};

TEST_F(Recording, WritesACueSheetCutWhereTheMixIsHalf) {
  Plays(1, "One", 100);
  Start();
  EXPECT_THAT(recorder.wish.file.path, HasSubstr("2026-11-21 20.05.00.flac"));
  At(200s);
  Plays(2, "Two \"live\"", 40);
  At(203s + 520ms);
  view.decks[0].volume = 55;
  Plays(2, "Two \"live\"", 60);
  At(210s);
  Ends(1);
  At(6001s);
  Plays(1, "Three", 100);
  EXPECT_EQ(
      Saved("2026-11-21 20.05.00.cue"),
      "REM DATE 2026\r\nTITLE \"2026-11-21 20.05.00\"\r\n"
      "FILE \"2026-11-21 20.05.00.flac\" WAVE\r\n"
      "  TRACK 01 AUDIO\r\n    TITLE \"One\"\r\n    PERFORMER \"Artist\"\r\n    INDEX 01 00:00:00\r\n"
      "  TRACK 02 AUDIO\r\n    TITLE \"Two 'live'\"\r\n    PERFORMER \"Artist\"\r\n"
      "    INDEX 01 03:23:39\r\n"
      "  TRACK 03 AUDIO\r\n    TITLE \"Three\"\r\n    PERFORMER \"Artist\"\r\n    INDEX 01 100:01:00\r\n");
  EXPECT_THAT(Saved("2026-11-21 20.05.00.txt"), HasSubstr("01:40:01  Artist - Three\r\n"));
  EXPECT_TRUE(recorder.cuts.empty());
}

TEST_F(Recording, NamesTheNextFileWhereTheDiskTookNoLargerOne) {
  Plays(1, "One", 100);
  Start();
  const std::string first = recorder.wish.file.path;
  recorder.progress.path = first.substr(0, first.size() - 5) + " (2).flac";
  recorder.progress.file_begins = 90s;
  Run();
  At(100s);
  view.decks[0].volume = 0;
  Plays(2, "Two", 100);
  const std::string sheet = Saved("2026-11-21 20.05.00.cue");
  EXPECT_THAT(
      sheet,
      HasSubstr("FILE \"2026-11-21 20.05.00 (2).flac\" WAVE\r\n  TRACK 02 AUDIO\r\n    TITLE \"Two\""));
  EXPECT_THAT(sheet, HasSubstr("INDEX 01 00:10:00"));
  EXPECT_THAT(Saved("recording.part"), HasSubstr("20.05.00.flac\r\n2026-11-21 20.05.00 (2).flac\r\n"));
  EXPECT_EQ(station.View().path, first);
}

TEST_F(Recording, GivesEachTrackAFileOfItsOwnNamedForEveryDisk) {
  Choose(RecordingChoice::Files::OneEach, RecordingFormat::Mp3);
  Plays(1, "AC/DC: one?", 100);
  Start();
  EXPECT_THAT(recorder.wish.file.path, HasSubstr("20.05.00/01 Artist - AC-DC- one-.mp3"));
  EXPECT_EQ(recorder.wish.file.title, "AC/DC: one?");
  At(100s);
  view.decks[0].volume = 0;
  Plays(2, "Two", 100);
  EXPECT_THAT(recorder.cuts, ElementsAre(std::pair(100'000'000us, "02 Artist - Two.mp3")));
  EXPECT_THAT(Saved("recording.part"), HasSubstr("02 Artist - Two.mp3\r\n"));
}

TEST_F(Recording, APausedTrackThatGoesOnIsNoNewOne) {
  Start();
  Plays(1, "One", 100);
  view.decks[0].loaded_state = DeckView::State::Paused;
  Run();
  Plays(1, "One", 100);
  EXPECT_EQ(station.View().tracks->size(), 1U);
}

TEST_F(Recording, FollowsDeckOneToAnotherOutput) {
  Start();
  EXPECT_EQ(recorder.wish.device, 1);
  view.outputs[0].device = 2;
  Run();
  EXPECT_EQ(recorder.followed, 2);
}

TEST_F(Recording, WarnsAnHourBeforeTheDiskIsFullAndThenMoreOften) {
  Start();
  for (const auto room : {4000s, 3599s, 3601s, 3000s, 899s, 880s}) {
    recorder.progress.room = room;
    Run();
  }
  EXPECT_THAT(told, ElementsAre(HasSubstr("59 more minutes"), HasSubstr("14 more minutes")));
  told.clear();
  recorder.progress.room = 9000s;  // something was deleted
  Run();
  recorder.progress.room = 200s;  // and a large file came at once
  Run();
  EXPECT_THAT(told, ElementsAre(HasSubstr("3 more minutes")));
}

TEST_F(Recording, TellsWhyItEndedAndMayBeginAnew) {
  Start();
  recorder.progress.recording = false;
  recorder.progress.failure =
      support::Failed(support::ErrorCode::Unavailable, support::Sentence::DiskFull, {"x"});
  Run();
  EXPECT_THAT(told, ElementsAre(HasSubstr("The recording has stopped. There is no room left")));
  EXPECT_EQ(station.View().state, RecordingView::State::Idle);
  Start();
  EXPECT_EQ(recorder.starts, 2U);
  EXPECT_EQ(station.View().failure, "");
}

TEST_F(Recording, FindsWhatAFallLeftAndTellsIt) {
  const auto recordings = folder.Native("\\Recordings");
  std::filesystem::create_directories(recordings);
  std::ofstream(recordings / "2026-11-20 21.00.00.flac") << "cut";
  std::ofstream(folder.Native("\\letter.wav")) << "mine";
  std::ofstream(recordings / "recording.part")
      << "2026-11-20 21.00.00.flac\r\n../letter.wav\r\n/etc/x.wav\r\n";
  station.StartUp();
  Run();
  EXPECT_THAT(recorder.repaired, ElementsAre("2026-11-20 21.00.00.flac"));
  EXPECT_THAT(told,
              ElementsAre(HasSubstr("\"2026-11-20 21.00.00.flac\" that was cut short is saved, 61:40")));
  EXPECT_FALSE(std::filesystem::exists(recordings / "recording.part"));
}

TEST_F(Recording, ListsATrackThatLeadsBeforeTheRecorderAnswers) {
  recorder.begins = false;
  Start();
  Plays(1, "Early", 100);
  EXPECT_EQ(station.View().state, RecordingView::State::Starting);
  recorder.progress.number = recorder.starts;
  recorder.progress.recording = true;
  At(700ms);
  Run();
  ASSERT_EQ(station.View().tracks->size(), 1U);
  EXPECT_EQ(station.View().tracks->front().title, "Early");
  EXPECT_EQ(station.View().tracks->front().place, 700ms);
}

TEST_F(Recording, CanBeStoppedBeforeItHasBegun) {
  station.Start();
  station.Stop();
  Run();
  EXPECT_EQ(station.View().state, RecordingView::State::Idle);
  EXPECT_EQ(recorder.starts, 0U) << "its folder was only being made";
  recorder.begins = false;
  Start();
  Stop();
  EXPECT_EQ(station.View().state, RecordingView::State::Idle);
  EXPECT_EQ(Saved("recording.part"),
            recorder.wish.file.path.substr(recorder.wish.file.path.rfind('/') + 1) + "\r\n");
}

TEST_F(Recording, IsKeptInAFallsJournalWhereADiskHoldsItsEndUp) {
  Start();
  recorder.ends = false;
  const auto journal = folder.Native("\\Recordings") / "recording.part";
  std::ofstream(journal) << "one";
  context.gate->Close();
  EXPECT_FALSE(station.ShutDown());
  station.Flush();
  EXPECT_TRUE(std::filesystem::exists(journal));
  recorder.ends = true;
  EXPECT_TRUE(station.ShutDown());
  station.Flush();
  EXPECT_FALSE(std::filesystem::exists(journal));
}

TEST_F(Recording, FollowsAnOutputThatChangesBeforeItHasBegun) {
  recorder.begins = false;
  Start();
  view.outputs[0].device = 2;
  Run();
  recorder.progress.number = recorder.starts;
  recorder.progress.recording = true;
  Run();
  EXPECT_EQ(recorder.followed, 2);
}

TEST_F(Recording, NamesWhatSoundsAndNotWhatIsMadeReadyOnItsDeck) {
  Start();
  view.decks[0].filename = "/music/coming.mp3";
  Plays(1, "One", 100);
  EXPECT_EQ(NameOf(station.View().tracks->front()), "One");
  view.decks[0].volume = 0;
  Plays(2, "Caf\xE9", 100);
  EXPECT_EQ(station.View().tracks->back().title, "Caf\xC3\xA9") << "tags and lists are UTF-8";
}

TEST_F(Recording, ShowsTheFolderWithTheTracksOfEachRecording) {
  const auto recordings = folder.Native("\\Recordings");
  std::filesystem::create_directories(recordings / "Ball 2026-11-20 21.00.00");
  for (const char* name : {"2026-11-19 22.00.00.flac", "song.mp3", "Ball 2026-11-20 21.00.00/01 A - B.ogg",
                           "Ball 2026-11-20 21.00.00/02 C.ogg", "Ball 2026-11-20 21.00.00.txt"}) {
    std::ofstream(recordings / name) << "x";
  }
  std::ofstream(recordings / "2026-11-19 22.00.00.cue")
      << CueSheet("x", "2026", {{0s, "Anna", "One", "x.flac"}, {6001s + 520ms, "Bo \"B\"", "Two", "x.flac"}});
  recorder.free = 441 * 3600 * 100;
  station.Look();
  Run();
  const auto& shelf = station.OnTheShelf();
  ASSERT_EQ(shelf.recordings.size(), 2U);
  EXPECT_EQ(shelf.recordings[0].title, "Ball 2026-11-20 21.00.00");
  ASSERT_EQ(shelf.recordings[0].tracks.size(), 2U);
  EXPECT_EQ(NameOf(shelf.recordings[0].tracks[0]), "A - B");
  EXPECT_THAT(shelf.recordings[0].tracks[1].file, HasSubstr("02 C.ogg"));
  ASSERT_EQ(shelf.recordings[1].tracks.size(), 2U);
  EXPECT_EQ(NameOf(shelf.recordings[1].tracks[1]), "Bo 'B' - Two");
  EXPECT_EQ(shelf.recordings[1].tracks[1].place, 6001s + 520ms);
  EXPECT_EQ(shelf.recordings[1].tracks[1].file, shelf.recordings[1].path);
  EXPECT_EQ(shelf.room, 1125s) << "of FLAC, four fifths of its samples";
}

TEST_F(Recording, IsCalledByItsNameAndKeepsAFolderThatMovesWithTheProgram) {
  RecordingChoice choice = station.Choice();
  choice.name = "Anna & Ben: 1/2";
  station.Choose(choice);
  EXPECT_EQ(store.Get("TLVG", "Recording", "Folder", "none"), "none");
  Start();
  EXPECT_THAT(recorder.wish.file.path, HasSubstr("/Anna & Ben- 1-2 2026-11-21 20.05.00.flac"));
  EXPECT_TRUE(NamesARecording(station.View().title));
}

TEST(RecordedWave, OfAnEveningIsAsWideAsThatOfASongAndLosesNoPeak) {
  RecordedWave wave;
  for (int i = 1; i <= 8 * 3600 * 10; ++i) wave.Add(i * 100ms, i == 100'003 ? 1.0F : 0.2F);
  EXPECT_LE(wave.columns.size(), RecordedWave::kMostColumns);
  EXPECT_GT(wave.columns.size(), RecordedWave::kMostColumns / 2);
  const auto loud = static_cast<std::size_t>(100'003 * 100ms / wave.step);
  EXPECT_EQ(wave.columns[loud], 255);
  EXPECT_EQ(std::count(wave.columns.begin(), wave.columns.end(), 51),
            static_cast<std::ptrdiff_t>(wave.columns.size()) - 1);
}

}  // namespace
}  // namespace app
