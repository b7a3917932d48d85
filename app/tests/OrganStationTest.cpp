// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WorkstationView.h"
#include "app/lights/OrganStation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "app/tests/Evening.h"
#include "lightorgan/testing/RecordingBoards.h"

namespace app::testing {
namespace {

using namespace std::chrono_literals;
using lightorgan::IoBoardSize;
using lightorgan::LightOrgan;
using lightorgan::Side;
using ::testing::ElementsAre;
namespace fs = std::filesystem;

class OrganEvening : public Evening {
 protected:
  OrganEvening() {
    folder_ = fs::path(::testing::TempDir()) / "organ-evening";
    fs::create_directories(folder_);
    Write("BankIO16.txt", "[1]\r\n1:0:1\r\n0:1\r\n[2]\r\n1:1\r\n0:1\r\n[3]\r\n");
    boards_ = &recorded_;
    Store("Setup", "UseK8000", "True");
  }
  ~OrganEvening() override {
    station_.reset();
    fs::remove_all(folder_);
  }
  void Write(const char* name, const std::string& text) {
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }
  [[nodiscard]] OrganStation& Organ() { return station_->Organ(); }
  [[nodiscard]] const lightorgan::LightOrganView& Lamps() { return Organ().View().lamps; }
  void Ask(OrganStation::Command command) {
    Organ().Ask(std::move(command));
    Work();
  }
  /// Workers, conductor and window come to rest.
  void Work() {
    for (int i = 0; i < 3; ++i) {
      Settle();
      workers_.RunAll();
      station_->PumpWindow();
    }
  }
  void Run(std::chrono::milliseconds time) {
    for (auto at = 0ms; at < time; at += 10ms) Advance(10ms);
  }
  void PlayTone(int left_peak, int right_peak) {
    engine_.AddFile("tone.mp3", {.seconds = 100, .left_peak = left_peak, .right_peak = right_peak});
    StartUp();
    Load(1, "tone.mp3");
    Play(1);
  }
  /// Outputs that are lit on the boards, "1 3".
  [[nodiscard]] std::string Lit() {
    std::string lit;
    for (int output = 1; output <= 16; ++output) {
      if (recorded_.lit[static_cast<std::size_t>(output - 1)])
        lit += (lit.empty() ? "" : " ") + std::to_string(output);
    }
    return lit;
  }

  lightorgan::testing::RecordingBoards recorded_;
};

TEST_F(OrganEvening, AToneLightsItsBandWhileItsDeckIsHeard) {
  PlayTone(16384, 16384);
  Ask([](LightOrgan& organ) { organ.cmdK8000(0); });
  Run(300ms);
  EXPECT_EQ(Lit(), "3 4") << "1 kHz lies where the third band meets the fourth";
  station_->Decks()[1].Do(&DeckStation::Pause);
  Run(500ms);
  EXPECT_EQ(Lit(), "");
}

TEST_F(OrganEvening, OddOutputsFollowTheLeftSideAndEvenOnesTheRight) {
  for (const auto& [left, right, lit] : {std::tuple{16384, 0, "3"}, std::tuple{0, 16384, ""}}) {
    PlayTone(left, right);
    Ask([](LightOrgan& organ) { organ.cmdK8000(1); });
    Run(300ms);
    EXPECT_EQ(Lit(), left > 0 ? lit : "4") << left << " " << right;
  }
}

TEST_F(OrganEvening, LampsFlashOnTheTappedBeatOfTheDeckThatIsHeard) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  for (int tap = 0; tap < 5; ++tap) {
    station_->Decks()[1].Tap();
    Run(500ms);
  }
  Ask([](LightOrgan& organ) { organ.cmdK8000(5); });
  std::vector<double> beats;
  bool lit = false;
  for (int tick = 0; tick < 300; ++tick) {
    Advance(10ms);
    const bool now = !Lit().empty();
    if (now && !lit) beats.push_back(Deck(1).grid->BeatAt(Deck(1).position));
    lit = now;
  }
  EXPECT_THAT(beats, ::testing::SizeIs(6));
  for (const double beat : beats) EXPECT_NEAR(beat, std::round(beat), 0.021);
  EXPECT_EQ(Lamps().beat_from, lightorgan::BeatFrom::Grid);
}

TEST_F(OrganEvening, OfBanksThatAreAskedForInARowTheNewestIsPlayed) {
  StartUp();
  Organ().Ask([](LightOrgan& organ) {
    organ.cmdK8000(3);
    organ.ScrollerIO(lightorgan::kFastest);
    for (const int bank : {1, 3, 2}) organ.ScrollerPatternIO(bank);
  });
  Settle();
  EXPECT_EQ(Lamps().io.table, nullptr) << "a worker has not come to it";
  Work();
  Run(40ms);
  ASSERT_NE(Lamps().io.table, nullptr);
  EXPECT_EQ(Lamps().io.table->Rows(), 3);
  EXPECT_EQ(Lit(), "2");
  EXPECT_EQ(Stored("Banks", "CurrentBank"), "2");
}

TEST_F(OrganEvening, BanksThatAreSavedPlayAtOnceAndThoseThatCannotBeAreTold) {
  StartUp();
  Ask([](LightOrgan& organ) { organ.cmdK8000(3); });
  OrganFiles::Banks read;
  Organ().ReadBanks(Side::Io, IoBoardSize::One, [&](const auto& banks) { read = banks.Value(); });
  Work();
  ASSERT_EQ(read.size(), 3U);
  std::vector<bool> saved;
  const auto save = [&] {
    Organ().SaveBanks(Side::Io, IoBoardSize::One, read,
                      [&](const auto& done) { saved.push_back(bool(done)); });
    Work();
  };
  save();
  EXPECT_EQ(files_.Content(folder_ / "BankIO16.txt"), "[1]\r\n1:0:1\r\n0:1\r\n[2]\r\n1:1\r\n0:1\r\n[3]\r\n");
  files_.SetFull(true);
  save();
  EXPECT_THAT(saved, ElementsAre(true, false));
}

TEST_F(OrganEvening, AMemoryBringsBackModesSpeedsAndLevelsAndOutlivesTheRun) {
  StartUp();
  Ask([](LightOrgan& organ) {
    organ.cmdK8000(2);
    organ.ScrollerIO(33);
    organ.IOScroller(4, 77);
  });
  Organ().Remember("Slow ]dance");
  Work();
  Ask([](LightOrgan& organ) {
    organ.IOScroller(4, 5);
    organ.cmdK8000(5);
  });
  ASSERT_EQ(Organ().Memories().size(), 1U);
  EXPECT_EQ(Organ().Memories()[0].name, "K80 Slow dance");
  Organ().Recall(0);
  Work();
  EXPECT_EQ(Lamps().io_mode, lightorgan::IoMode::Lo);
  EXPECT_EQ(Lamps().io.speed, 33);
  EXPECT_EQ(Lamps().io.sliders[3], 77);
  EXPECT_EQ(files_.Content(folder_ / "K8000.tlv"), Organ().Memories()[0].text);

  Write("Memories.tlv", "nothing\r\n[Other]\r\nx\r\n" + *files_.Content(folder_ / "Memories.tlv"));
  StartUp();
  Work();
  ASSERT_EQ(Organ().Memories().size(), 1U);
  EXPECT_EQ(Organ().Memories()[0].name, "K80 Slow dance");
  Organ().Forget(0);
  Work();
  EXPECT_EQ(files_.Content(folder_ / "Memories.tlv"), "");
}

TEST_F(OrganEvening, WhatIsRememberedInTheLastMomentIsSavedByTheShutdown) {
  StartUp();
  Organ().Remember("last");
  Settle();
  station_->PumpWindow();
  station_->ShutDown();
  EXPECT_TRUE(files_.Content(folder_ / "Memories.tlv").has_value());
}

TEST_F(OrganEvening, AMemoryThatIsMadeBeforeTheFileWasReadTakesNoneAway) {
  Write("Memories.tlv", "[K80 old]\r\nBEAT\r\n[K80 both]\r\nBEAT\r\n");
  Ports ports{engine_, engine_, tags_, settings_, files_, workers_, clock_, &mixer_, &visualisation_};
  ports.boards = boards_;
  station_.emplace(ports, support::ProgramFolder(folder_), Workstation::Conducting::ByHand);
  station_->StartUp();
  for (const char* name : {"new", "both"}) Organ().Remember(name);
  Settle();
  station_->PumpWindow();
  ASSERT_EQ(Organ().Memories().size(), 2U) << "no worker has come to the file";
  Work();
  ASSERT_EQ(Organ().Memories().size(), 3U);
  EXPECT_EQ(Organ().Memories()[0].name, "K80 old");
  EXPECT_NE(Organ().Memories()[1].text, "BEAT\r\n") << "the newer one";
  EXPECT_EQ(lightorgan::ParseMemories(*files_.Content(folder_ / "Memories.tlv")), Organ().Memories());
}

TEST_F(OrganEvening, AFileOfMemoriesThatCannotBeReadIsToldOfAndNotWrittenOver) {
  fs::create_directories(folder_ / "Memories.tlv");
  StartUp();
  Work();
  EXPECT_EQ(station_->View().notice, "\"Memories.tlv\" cannot be read.");
  Organ().Remember("new");
  Work();
  EXPECT_EQ(Organ().Memories().size(), 1U);
  EXPECT_EQ(files_.Content(folder_ / "Memories.tlv"), std::nullopt);
}

TEST_F(OrganEvening, AMemoryIsRecalledThoughItsFileCannotBeWritten) {
  StartUp();
  Organ().Remember("");
  Work();
  files_.SetFull(true);
  Ask([](LightOrgan& organ) { organ.cmdK8000(5); });
  Organ().Recall(0);
  Organ().Recall(1);
  Work();
  EXPECT_EQ(Lamps().io_mode, lightorgan::IoMode::Constant);
  EXPECT_NE(station_->View().notice.find("K8000.tlv"), std::string::npos);
}

TEST_F(OrganEvening, WithoutABoardABoxSaysSoAndTheLampsOfTheWindowGoOn) {
  boards_ = nullptr;
  StartUp();
  Settle();
  station_->AttachWindow(&window_, &window_);
  Work();
  EXPECT_THAT(window_.Sentences(), ElementsAre(say_(support::Sentence::NoIoBoard)));
  Ask([](LightOrgan& organ) { organ.btnOn(3); });
  EXPECT_TRUE(Lamps().leds[2]);
  EXPECT_EQ(Lamps().trouble, say_(support::Sentence::NoIoBoard));
  Organ().SwitchBoards(false);
  Work();
  EXPECT_EQ(Lamps().trouble, "");
  EXPECT_EQ(Stored("Setup", "UseK8000"), "False");
}

TEST(HeardMusic, ABeatIsToldAheadAtTheSpeedThatIsHeard) {
  const music::BeatGrid grid =
      music::BeatGrid::Even(support::Bpm{120}, 1, music::Seconds(0.1), music::Seconds(60));
  const struct {
    const char* what;
    std::chrono::microseconds position;
    double playing_bpm;
    std::chrono::microseconds ahead;
    std::int64_t beat;
  } kCases[] = {
      {"before the beat", 1'099'000us, 120, 0us, 1},   {"on it", 1'101'000us, 120, 0us, 2},
      {"so far ahead", 1'090'000us, 120, 11'000us, 2}, {"not so far", 1'090'000us, 120, 9'000us, 1},
      {"half as fast", 1'090'000us, 60, 11'000us, 1},  {"twice as fast", 1'090'000us, 240, 6'000us, 2},
  };
  support::testing::FakeClock clock;
  decks::testing::RecordingEngine engine(clock);
  for (const auto& beat : kCases) {
    WorkstationView view;
    view.sound.from = HeardFrom::Deck2;
    view.decks[1].grid = std::make_shared<const music::BeatGrid>(grid);
    view.decks[1].bpm = 120;
    view.decks[1].playing_bpm = beat.playing_bpm;
    view.decks[1].position = beat.position;
    HeardMusic music({engine, [](HeardFrom) { return decks::StreamHandle{0}; }});
    EXPECT_FALSE(music.LastBeat(0us).has_value()) << "nothing was looked at";
    music.Look(&view);
    EXPECT_EQ(music.LastBeat(beat.ahead), (lightorgan::HeardBeat{2, beat.beat})) << beat.what;
    const auto place = HeardBeatsOf(view);
    ASSERT_TRUE(place);
    EXPECT_DOUBLE_EQ(place->beat, grid.BeatAt(music::Seconds(beat.position)));
    EXPECT_DOUBLE_EQ(place->tempo, beat.playing_bpm);
    view.sound.from = HeardFrom::Deck1;
    EXPECT_FALSE(HeardBeatsOf(view));
    EXPECT_FALSE(music.LastBeat(beat.ahead).has_value()) << "that deck has no grid";
  }
}

}  // namespace
}  // namespace app::testing
