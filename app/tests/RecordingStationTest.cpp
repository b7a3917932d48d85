// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/recording/RecordingStation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "app/StationContext.h"
#include "app/WorkstationView.h"
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

class FakeRecorder final : public decks::ProgrammeRecorder {
 public:
  std::uint64_t Start(const decks::RecordingWish& wanted) override {
    wish = wanted;
    progress = {};
    progress.recording = true;
    return progress.number = ++starts;
  }
  void Cut(std::chrono::microseconds place, const decks::RecordingFile& next) override {
    cuts.emplace_back(place, std::filesystem::path(next.path).filename().string());
  }
  void Follow(int device, std::uint32_t /*speaker*/) override { followed = device; }
  void Stop() override { progress.recording = false; }
  decks::RecordingProgress Progress() override { return progress; }
  support::Result<std::chrono::seconds> Repair(const std::string& path) override {
    repaired.push_back(std::filesystem::path(path).filename().string());
    return 3700s;
  }

  decks::RecordingWish wish;
  decks::RecordingProgress progress;
  std::uint64_t starts = 0;
  int followed = 0;
  std::vector<std::pair<std::chrono::microseconds, std::string>> cuts;
  std::vector<std::string> repaired;
};

/// A station with two decks whose views are set by hand, and the words to use it.
class Recording : public ::testing::Test {
 protected:
  Recording() {
    view.outputs[0].device = 1;
    Run();
  }
  void Run() {
    for (int i = 0; i < 3; ++i) {
      workers.RunAll();
      for (const Mailbox::Job& job : context.conductor->Take()) job();
      station.Tick(view);
    }
    workers.RunAll();
  }
  void Plays(std::size_t deck, const std::string& title, int volume) {
    DeckView& shown = view.decks[deck - 1];
    shown.loaded_state = DeckView::State::Playing;
    shown.loaded = "/music/" + title + ".mp3";
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
  Settings settings{store, folder};
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
                         [this](std::string sentence) { told.push_back(std::move(sentence)); },
                         nullptr};
  FakeRecorder recorder;
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
  EXPECT_EQ(station.View().tracks, 1);
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
  for (const auto room : {4000s, 3599s, 3000s, 899s, 880s}) {
    recorder.progress.room = room;
    Run();
  }
  EXPECT_THAT(told, ElementsAre(HasSubstr("59 more minutes"), HasSubstr("14 more minutes")));
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
  std::ofstream(recordings / "recording.part") << "2026-11-20 21.00.00.flac\r\n";
  station.StartUp();
  Run();
  EXPECT_THAT(recorder.repaired, ElementsAre("2026-11-20 21.00.00.flac"));
  EXPECT_THAT(told,
              ElementsAre(HasSubstr("\"2026-11-20 21.00.00.flac\" that was cut short is saved, 61:40")));
  EXPECT_FALSE(std::filesystem::exists(recordings / "recording.part"));
}

}  // namespace
}  // namespace app
