// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>

#include "app/singers/SingerStation.h"
#include "app/tests/Evening.h"
#include "karaoke/testing/MidiBytes.h"
#include "karaoke/testing/RecordingSynthesiser.h"
#include "support/testing/TemporaryFolder.h"

namespace app {
namespace {

using namespace std::chrono_literals;
using singers::Wish;

/// An evening whose songs last ten seconds.
class SingersTest : public testing::Evening {
 protected:
  SingersTest() {
    folder_ = program_.Path();
    karaoke::testing::TrackBytes track = karaoke::testing::UsualHead().Name("Words").Text(0, "@TLittle song");
    for (int i = 0; i < 20; ++i) track.Event(i == 0 ? 0 : 380, {0x90, 60, 100}).Event(100, {0x80, 60, 0});
    const std::string bytes = karaoke::testing::FileBytes({track.End(380)});
    for (const char* name : {"1.kar", "2.kar", "3.kar"})
      std::ofstream(program_.Path() / name, std::ios::binary) << bytes;
    std::ofstream(program_.Path() / "bad.kar") << "a shopping list";
    Begin();
  }
  void Begin() {
    StartUp(&synthesisers_);
    Settle();
  }
  void PutOnDisk() {
    for (const std::string_view name : {singers::kRotationFile, singers::kSingerBookFile}) {
      const auto path = program_.Path() / name.substr(1);
      if (const auto text = files_.Content(path)) std::ofstream(path, std::ios::binary) << *text;
    }
  }
  /// As after a kill: what was saved is there, nothing is shut down.
  void Fall() {
    workers_.RunAll();
    PutOnDisk();
    station_.reset();
    Begin();
  }
  [[nodiscard]] SingerStation& Host() { return station_->Singers(); }
  [[nodiscard]] const SingersSheet& Sheet() { return *Host().View().sheet; }
  [[nodiscard]] singers::SingerId Id(std::string_view name) { return Sheet().turns->FindName(name)->id; }
  [[nodiscard]] Wish Song(const std::string& name, int key = 0) {
    Wish wish;
    wish.filename = name.ends_with("mp3") ? name : (program_.Path() / name).string();
    wish.length = 10s;
    wish.semitones = key;
    return wish;
  }
  void Ask(const std::string& name, const std::string& file, int key = 0) {
    if (Sheet().turns->FindName(name) == nullptr) Host().Do(&SingerStation::Add, name);
    Settle();
    Host().Do(&SingerStation::Ask, Id(name), Song(file, key));
    Settle();
  }
  void Next() {
    clock_.Advance(SingerStation::kOneHand);
    Host().Do(&SingerStation::Next);
    Settle();
    workers_.RunAll();
    Settle();
  }
  void Go(std::chrono::milliseconds time) {
    for (; time > 0ms; time -= 20ms) {
      Advance(20ms);
      workers_.RunAll();
    }
    station_->PumpWindow();
  }
  [[nodiscard]] std::string OnStage() {
    const auto& turn = Sheet().turns->OnStage();
    if (!turn) return "";
    const singers::Singer* singer = Sheet().turns->Find(turn->singer);
    return singer == nullptr ? "nobody" : singer->name;
  }
  [[nodiscard]] std::string Sounds() {
    const SongView& song = station_->Songs().View();
    if (song.state != SongView::State::Playing) return "";
    return std::filesystem::path(song.filename).filename().string();
  }

  support::testing::TemporaryFolder program_;
  karaoke::testing::RecordingSynthesisers synthesisers_;
};

TEST_F(SingersTest, MusicPlaysBetweenTheSongsAndMakesWayForTheNextOne) {
  Playlist(3).AddRow(std::vector<std::string_view>{"", "Between", "01:40", "b.mp3"});
  station_->Lists().Follow();
  Ask("Anna", "1.kar");
  Ask("Ben", "2.kar");
  Next();
  Go(12s);
  EXPECT_EQ(Sounds(), "");
  Go(4s);
  EXPECT_EQ(Deck(1).state, DeckView::State::Playing);
  EXPECT_EQ(Deck(1).filename, "b.mp3");
  EXPECT_EQ(Deck(1).volume, 100);
  Next();
  EXPECT_EQ(Sounds(), "2.kar");
  Go(2s);
  EXPECT_EQ(Deck(1).state, DeckView::State::Paused);
  Go(12s);
  EXPECT_EQ(Deck(1).state, DeckView::State::Playing) << "goes on";
  station_->Lists().SetBreakMusic(false);
  Ask("Cleo", "3.kar");
  Next();
  Go(14s);
  EXPECT_EQ(Deck(1).state, DeckView::State::Paused) << "not wished any more";
}

TEST_F(SingersTest, SingersComeOnStageInTurnWithTheirSongsAndKeys) {
  Ask("Anna", "1.kar", -2);
  Ask("Ben", "a.mp3", 3);
  Ask("Cleo", "3.kar");
  EXPECT_EQ(OnStage(), "");
  Next();
  EXPECT_EQ(OnStage(), "Anna");
  EXPECT_EQ(Sounds(), "1.kar");
  EXPECT_EQ(station_->Songs().View().semitones, -2);
  ASSERT_EQ(Sheet().waits.size(), 2U);
  const auto waits = Sheet().waits;
  Advance(6s);
  Settle();
  EXPECT_EQ(waits[0].most - Sheet().waits[0].most, 6s) << "the rest of the song counts";
  Next();
  EXPECT_EQ(OnStage(), "Ben");
  EXPECT_EQ(Sounds(), "a.mp3");
  EXPECT_EQ(station_->Songs().View().semitones, 3);
  Next();
  EXPECT_EQ(Sounds(), "3.kar");
  EXPECT_EQ(station_->Songs().View().semitones, 0) << "a key is its singer's";
  Next();
  EXPECT_EQ(OnStage(), "") << "nobody has a wish left";
}

TEST_F(SingersTest, ASongThatEndsEndsItsTurnAndIsRememberedAsItWasSung) {
  Ask("Anna", "1.kar");
  Next();
  station_->Songs().SetKey(4);
  Settle();
  for (int i = 0; i < 12; ++i) Advance(1s);
  Settle();
  EXPECT_EQ(OnStage(), "");
  EXPECT_EQ(Sheet().turns->Find(Id("Anna"))->sung, 1);
  EXPECT_EQ(*Host().View().names, std::vector<std::string>{"Anna"});
  Fall();
  EXPECT_EQ(Sheet().turns->Find(Id("Anna"))->sung, 1);
  Ask("ANNA", "1.kar");
  EXPECT_EQ(Sheet().turns->Find(Id("Anna"))->wishes[0].semitones, 4);
  Ask("Anna", "1.kar", -1);
  EXPECT_EQ(Sheet().turns->Find(Id("Anna"))->wishes[1].semitones, -1)
      << "what is asked for now goes before it";
}

TEST_F(SingersTest, TheNextSongIsReadyBeforeItsTurn) {
  Ask("Anna", "1.kar");
  Ask("Ben", "2.kar");
  Ask("Cleo", "a.mp3");
  workers_.RunAll();
  Settle();
  for (const char* file : {"1.kar", "2.kar"}) {
    clock_.Advance(SingerStation::kOneHand);
    Host().Do(&SingerStation::Next);
    station_->Tick();  // and no worker has worked
    EXPECT_EQ(Sounds(), file);
    Settle();
    workers_.RunAll();
    Settle();
  }
  engine_.ClearLog();
  for (int i = 0; i < 4; ++i) Advance(5s);
  const auto log = engine_.Log();
  EXPECT_GE(std::count(log.begin(), log.end(), "Prepare a.mp3"), 2)
      << "the engine forgets what nobody came for";
}

TEST_F(SingersTest, WhatNobodyHeardWasNotSung) {
  Ask("Anna", "bad.kar");
  Ask("Ben", "2.kar");
  Next();
  EXPECT_EQ(OnStage(), "");
  EXPECT_EQ(Sheet().turns->Next()->name, "Anna");
  EXPECT_NE(station_->Songs().View().failure, "");
  Host().Do(&SingerStation::Skip, Id("Anna"));
  Settle();
  Next();
  EXPECT_EQ(OnStage(), "Ben");
  Host().Do(&SingerStation::Skip, Id("Ben"));
  Settle();
  EXPECT_EQ(Sounds(), "");
  EXPECT_EQ(Sheet().turns->Find(Id("Ben"))->sung, 0);
  EXPECT_EQ(Sheet().turns->Find(Id("Ben"))->wishes.size(), 1U);
}

TEST_F(SingersTest, AFallInMidSongLeavesTheTurnAndAnotherEveningBeginsAnew) {
  Host().Do(&SingerStation::SetRule, singers::Rule::FirstCome);
  Ask("Anna", "1.kar");
  Ask("Ben", "2.kar");
  Next();
  Fall();
  EXPECT_EQ(OnStage(), "Anna");
  Next();
  EXPECT_EQ(OnStage(), "Anna") << "she was cut off";
  station_->ShutDown();
  PutOnDisk();
  local_time_ = [] {
    std::tm time = LocalTimeNow();
    time.tm_year += 1;
    return time;
  };
  Begin();
  EXPECT_TRUE(Sheet().turns->Singers().empty());
  EXPECT_EQ(Sheet().turns->Rule(), singers::Rule::FirstCome);
}

TEST_F(SingersTest, ADamagedListIsSetAsideAndAFullDiskIsToldOnce) {
  station_->ShutDown();
  std::ofstream(program_.Path() / "tlv.singers") << "x";
  Begin();
  EXPECT_TRUE(Sheet().turns->Singers().empty());
  files_.SetFull(true);
  Ask("Dora", "1.kar");
  workers_.RunAll();
  EXPECT_TRUE(std::filesystem::exists(program_.Path() / "tlv.singers.damaged-1"));
  Settle();
  EXPECT_NE(station_->View().notice.find("list of singers"), std::string::npos);
  files_.SetFull(false);
  station_->ShutDown();
  PutOnDisk();
  Begin();
  EXPECT_NE(Sheet().turns->FindName("Dora"), nullptr);
}

TEST_F(SingersTest, TwoPressesOfOneHandBringOneSinger) {
  Ask("Anna", "1.kar");
  Ask("Ben", "2.kar");
  Next();
  Advance(200ms);
  Host().Do(&SingerStation::Next);
  Settle();
  EXPECT_EQ(OnStage(), "Anna");
}

TEST_F(SingersTest, WhoIsSkippedWhileTheSongIsMadeReadyDoesNotSingAfterwards) {
  for (const char* file : {"1.kar", "a.mp3"}) {
    Ask("Anna", file);
    clock_.Advance(SingerStation::kOneHand);
    Host().Do(&SingerStation::Next);
    station_->Tick();
    Host().Do(&SingerStation::Skip, Id("Anna"));
    Settle();
    workers_.RunAll();
    Settle();
    EXPECT_EQ(Sounds(), "") << file;
    EXPECT_EQ(OnStage(), "");
    Host().Do(&SingerStation::Withdraw, Id("Anna"), Sheet().turns->FindName("Anna")->wishes[0]);
    Settle();
  }
}

TEST_F(SingersTest, AnotherEveningLeavesTheListOfTheLastOne) {
  Ask("Anna", "1.kar");
  local_time_ = [] {
    std::tm time = LocalTimeNow();
    time.tm_year += 1;
    return time;
  };
  Fall();
  EXPECT_TRUE(Sheet().turns->Singers().empty());
  workers_.RunAll();
  EXPECT_TRUE(std::filesystem::exists(program_.Path() / "tlv.singers.before-1")) << "it is kept all the same";
}

TEST_F(SingersTest, ANightThatGoesOnPastSixIsStillThisOne) {
  Ask("Anna", "1.kar");
  local_time_ = LocalTimeNow;
  station_->ShutDown();
  int years = 0;
  local_time_ = [&years] {
    std::tm time = LocalTimeNow();
    time.tm_year += years;
    return time;
  };
  Begin();
  years = 1;
  Ask("Ben", "2.kar");
  Fall();
  EXPECT_NE(Sheet().turns->FindName("Ben"), nullptr);
}

TEST_F(SingersTest, ALevelIsThatOfTheMiddleOfASong) {
  Ask("Anna", "1.kar");
  Next();
  station_->Songs().SetVolume(70);
  for (int i = 0; i < 8; ++i) Advance(1s);
  station_->Songs().SetVolume(0);  // faded out by hand
  for (int i = 0; i < 4; ++i) Advance(1s);
  station_->Songs().SetVolume(90);
  Ask("Anna", "1.kar");
  Ask("Ben", "2.kar");
  EXPECT_EQ(Sheet().turns->FindName("Anna")->wishes[0].volume, 70);
  Next();
  EXPECT_EQ(station_->Songs().View().volume, 90) << OnStage();
  Next();
  EXPECT_EQ(station_->Songs().View().volume, 70) << OnStage();
}

TEST_F(SingersTest, WhatWasLeftOnStageIsTakenBackWhenNothingGoesOnWithIt) {
  Ask("Anna", "1.kar");
  Next();
  Fall();
  EXPECT_EQ(OnStage(), "Anna");
  Advance(11s);
  Settle();
  EXPECT_EQ(OnStage(), "");
  EXPECT_EQ(Sheet().turns->Next()->name, "Anna");
}

TEST_F(SingersTest, ASongOfTheHostsOwnEndsTheTurnBeforeIt) {
  Ask("Anna", "1.kar");
  Next();
  Host().Do(&SingerStation::PlayNow, Song("2.kar"));
  Settle();
  workers_.RunAll();
  Settle();
  EXPECT_EQ(OnStage(), "nobody");
  EXPECT_EQ(Sounds(), "2.kar");
  EXPECT_EQ(Sheet().turns->Find(Id("Anna"))->sung, 1);
}

}  // namespace
}  // namespace app
