// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "app/WorkstationView.h"
#include "app/lights/LiveLightStation.h"
#include "app/resume/Journal.h"
#include "app/resume/ResumeStation.h"
#include "app/tests/Evening.h"
#include "dmx/ShowFile.h"
#include "dmx/testing/RecordingDmxInterface.h"
#include "karaoke/testing/MidiBytes.h"
#include "karaoke/testing/RecordingSynthesiser.h"
#include "support/testing/TemporaryFolder.h"

namespace app {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::State;

/// An evening of three files of 100 s, with a program folder on the disk, in which the program may fall.
class ResumeTest : public testing::Evening {
 protected:
  ResumeTest() {
    folder_ = disk_.Path();
    journal_ = &workers_;
    dmx_ = &wire_;
    Store("Settings", "MixPoints", "False");
    Store("Mixer", "MixTime", "4");
    Begin();
  }
  ~ResumeTest() override { station_.reset(); }  // it still uses what stands below
  void Begin() {
    StartUp(&synthesisers_);
    station_->AttachWindow(&window_, &window_);
    Go(100ms);
  }
  void Go(std::chrono::milliseconds time) {
    for (; time > 0ms; time -= 20ms) {
      Advance(20ms);
      workers_.RunAll();
      station_->PumpWindow();
      station_->Lists().Follow();
    }
  }
  /// As by kill -9: what is on the disk by then is all that is left.
  void Fall() {
    std::vector<std::pair<std::string, std::string>> left;
    const std::string history = "History/" + EveningOf(LocalTimeNow()) + ".tpl";
    for (const std::string& name : {std::string("tlv.night"), std::string("tlv.night-safe"),
                                    std::string("tlv.list1"), std::string("tlv.list2"), history}) {
      if (const auto content = files_.Content(folder_ / name)) left.emplace_back(name, *content);
    }
    station_->AttachWindow(nullptr, nullptr);
    station_.reset();
    std::filesystem::create_directories(folder_ / "History");
    for (const auto& [name, content] : left) std::ofstream(folder_ / name, std::ios::binary) << content;
  }
  void FallAndStart() {
    Fall();
    Begin();
  }
  void List(const std::vector<std::string>& files) {
    for (const std::string& file : files) {
      Playlist(1).AddRow(std::vector<std::string_view>{"Artist", "Title of " + file, "01:40", file});
    }
    Go(100ms);
  }
  void BeginToPlay(int deck, const std::string& file) {
    Load(deck, file);
    Play(deck);
  }
  [[nodiscard]] std::string Plays() {
    std::string plays;
    for (const int deck : {1, 2}) {
      if (Deck(deck).state == State::Playing) plays += Deck(deck).filename + " ";
    }
    return plays;
  }
  [[nodiscard]] double PlaceOf(int deck) {
    return std::chrono::duration<double>(Deck(deck).position).count();
  }
  [[nodiscard]] const std::string& Notice() { return station_->View().notice; }

  support::testing::TemporaryFolder disk_;
  dmx::testing::RecordingDmxInterface wire_;
  karaoke::testing::RecordingSynthesisers synthesisers_;
};

TEST_F(ResumeTest, DecksGoOnWhereTheyWereAsTheyWereSet) {
  BeginToPlay(1, "a.mp3");
  Load(2, "b.mp3");
  station_->Decks()[1].SetTempo(4);
  station_->Decks()[1].SetKeyLock(decks::KeyLock::Off);
  station_->Decks()[2].SetPitch(-2);
  station_->Decks()[1].SetMixPoint(MixPoint::End, 77s);
  station_->Equaliser().Set(3, -6);
  station_->Decks()[1].Adjust(&DeckStation::SetPreVolume, 40);
  station_->Lists().MoveMixer({{90, 60}, -50}, MovedByHand::Crossfader);
  Go(30s);
  Play(2);
  Go(1s);
  station_->Decks()[2].Do(&DeckStation::Pause);
  Go(11'300ms);
  const double place = PlaceOf(1);
  FallAndStart();
  EXPECT_EQ(Plays(), "a.mp3 ");
  EXPECT_NEAR(PlaceOf(1), place, 1);
  EXPECT_FLOAT_EQ(Deck(1).tempo_percent, 4);
  EXPECT_EQ(Deck(1).key_lock, decks::KeyLock::Off);
  EXPECT_EQ(Deck(1).title, "Title of a.mp3");
  EXPECT_EQ(Deck(1).end_mix_point, 77s);
  EXPECT_EQ(Deck(1).equaliser[2], -6);
  EXPECT_EQ(Deck(1).volume, 90);
  EXPECT_EQ(Deck(1).pre_volume, 40);
  EXPECT_EQ(Deck(2).state, State::Paused);
  EXPECT_NEAR(PlaceOf(2), 1, 0.05);
  EXPECT_FLOAT_EQ(Deck(2).pitch, -2);
  EXPECT_EQ(Deck(2).volume, 30);
  ASSERT_NE(station_->ResumedMixer(), nullptr);
  EXPECT_EQ(station_->ResumedMixer()->crossfader, -50);
  EXPECT_EQ(Notice(), say_(support::Sentence::EveningGoesOn));
}

TEST_F(ResumeTest, AutomixGoesOnWheneverTheProgramFalls) {
  const struct {
    const char* moment;
    std::chrono::milliseconds time;
    const char* plays;
  } kMoments[] = {
      {"long before the mix", 20s, "a.mp3 "},
      {"the next one stands ready", 93s, "a.mp3 "},
      {"its start is scheduled", 95'900ms, "a.mp3 "},
      {"in the middle of the mix", 98s, "a.mp3 b.mp3 "},
      {"just after it", 101s, "b.mp3 "},
  };
  Store("Settings", "Automix", "True");
  for (const auto& moment : kMoments) {
    SCOPED_TRACE(moment.moment);
    station_.reset();
    for (const char* list : {"tlv.list1", "tlv.list2"}) std::filesystem::remove(folder_ / list);
    std::filesystem::remove_all(folder_ / "History");
    Begin();
    for (const int list : {1, 2}) Playlist(list) = catalogue::track_table(catalogue::TrackColumns());
    List({"a.mp3", "b.mp3", "c.flac"});
    BeginToPlay(1, "a.mp3");
    Go(moment.time);
    ASSERT_EQ(Plays(), moment.plays);
    const double places[] = {PlaceOf(1), PlaceOf(2)};
    const int crossfader = station_->Lists().View().crossfader;
    FallAndStart();
    EXPECT_EQ(Plays(), moment.plays);
    EXPECT_NEAR(station_->Lists().View().crossfader, crossfader, 30);
    for (const int deck : {1, 2}) {
      const bool plays = Deck(deck).state == State::Playing;
      EXPECT_NEAR(PlaceOf(deck), plays ? places[deck - 1] : PlaceOf(deck), 1) << "deck " << deck;
    }
    EXPECT_EQ(Playlist(1).Rows(), 3);
    Go(105s - std::min<std::chrono::milliseconds>(moment.time, 100s));
    EXPECT_EQ(Plays(), "b.mp3 ") << "it mixes at the next mix point";
    EXPECT_EQ(Deck(2).volume, 100);
    Go(97s);
    EXPECT_EQ(Deck(1).filename, "c.flac") << "and at the one after that";
  }
}

TEST_F(ResumeTest, AfterACleanEndNothingGoesOn) {
  BeginToPlay(1, "a.mp3");
  Go(10s);
  ASSERT_TRUE(files_.Content(folder_ / "tlv.night"));
  std::ofstream(folder_ / "tlv.night") << *files_.Content(folder_ / "tlv.night");
  station_.reset();
  EXPECT_FALSE(std::filesystem::exists(folder_ / "tlv.night"));
  Begin();
  EXPECT_EQ(Deck(1).state, State::Empty);
  EXPECT_EQ(station_->ResumedMixer(), nullptr);
  EXPECT_THAT(Notice(), IsEmpty());
}

TEST_F(ResumeTest, TheSwitchOfTheSettingsLeavesItAlone) {
  BeginToPlay(1, "a.mp3");
  Go(10s);
  Store("Settings", "Resume", "False");
  FallAndStart();
  EXPECT_EQ(Deck(1).state, State::Empty);
}

TEST_F(ResumeTest, WhatAHandDoesFirstWins) {
  BeginToPlay(1, "a.mp3");
  BeginToPlay(2, "b.mp3");
  Go(20s);
  engine_.HoldPreparing();
  FallAndStart();
  ASSERT_EQ(Deck(1).state, State::Loading);
  Load(1, "c.flac");
  station_->Decks()[2].Do(&DeckStation::Stop);
  while (engine_.FinishPreparing()) Settle();
  Go(1s);
  EXPECT_EQ(Plays(), "");
  EXPECT_EQ(Deck(1).filename, "c.flac");
  EXPECT_EQ(PlaceOf(2), 0);
}

TEST_F(ResumeTest, WhileAFileIsStillComingTheJournalKeepsItsPlace) {
  BeginToPlay(1, "a.mp3");
  Go(42s);
  engine_.HoldPreparing();
  FallAndStart();
  Go(5s);
  Fall();
  const auto journal = ReadJournal(support::ProgramFolder(folder_)).newest;
  ASSERT_TRUE(journal);
  EXPECT_EQ(journal->decks[0].state, DeckInHand::State::Playing);
  EXPECT_NEAR(std::chrono::duration<double>(journal->decks[0].position).count(), 42, 1);
}

TEST_F(ResumeTest, AFileThatIsGoneIsSaidAndAutomixPlaysTheNextOne) {
  Store("Settings", "Automix", "True");
  FallAndStart();
  List({"a.mp3", "b.mp3"});
  BeginToPlay(1, "a.mp3");
  Go(40s);
  Fall();
  engine_.RemoveFile("a.mp3");
  Begin();
  EXPECT_THAT(Notice(), HasSubstr("Title of a.mp3"));
  Go(2s);
  EXPECT_EQ(Plays(), "b.mp3 ");
}

TEST_F(ResumeTest, AFileThatTheProgramFellOverTwiceIsNamedAndLeftOut) {
  Store("Settings", "Automix", "True");
  FallAndStart();
  List({"a.mp3", "b.mp3"});
  BeginToPlay(1, "a.mp3");
  Go(3s);
  FallAndStart();
  EXPECT_EQ(Plays(), "a.mp3 ");
  EXPECT_THAT(window_.Sentences(), IsEmpty());
  Go(3s);
  FallAndStart();
  EXPECT_EQ(window_.Sentences(), std::vector<std::string>{say_(support::Sentence::FileFellTwice, {"a.mp3"})});
  Go(2s);
  EXPECT_EQ(Plays(), "b.mp3 ") << "the mixer leaves it out too";
  Load(2, "a.mp3");
  EXPECT_EQ(Deck(2).filename, "a.mp3") << "a hand may";
}

TEST_F(ResumeTest, AJournalThatIsDamagedIsToldAndNothingElseHappens) {
  BeginToPlay(1, "a.mp3");
  Go(10s);
  Fall();
  for (const char* name : {"tlv.night", "tlv.night-safe"}) std::ofstream(folder_ / name) << "dj TOLVEN night";
  Begin();
  EXPECT_EQ(Notice(), say_(support::Sentence::JournalDamaged));
  EXPECT_EQ(Deck(1).state, State::Empty);
  BeginToPlay(1, "b.mp3");
  Go(20s);
  FallAndStart();
  EXPECT_EQ(Plays(), "b.mp3 ") << "a new one is kept";
}

TEST_F(ResumeTest, ASongGoesOnInTheSingersKey) {
  auto track = karaoke::testing::UsualHead().Name("Words").Text(0, "@TSong");
  for (int i = 0; i < 20; ++i) track.Event(i == 0 ? 0 : 380, {0x90, 60, 100}).Event(100, {0x80, 60, 0});
  const std::string song = (folder_ / "a.kar").string();
  std::ofstream(song, std::ios::binary) << karaoke::testing::FileBytes({track.End(380)});
  for (const std::string& file : {song, std::string("a.mp3")}) {
    SCOPED_TRACE(file);
    station_->Songs().Play({file, "Anna", "Song"});
    Go(200ms);
    station_->Songs().SetKey(-3);
    station_->Songs().SetTempo(10);
    Go(4s);
    const auto before = station_->Songs().View().position;
    FallAndStart();
    Go(200ms);
    const SongView& view = station_->Songs().View();
    EXPECT_EQ(view.state, SongView::State::Playing);
    EXPECT_EQ(view.filename, file);
    EXPECT_EQ(view.semitones, -3);
    EXPECT_DOUBLE_EQ(view.percent, 10);
    EXPECT_NEAR(std::chrono::duration<double>(view.position - before).count(), 0, 1);
  }
}

TEST_F(ResumeTest, LampsHoldTheirLookAndTheShowGoesOn) {
  dmx::Show show;
  for (const int start : {10, 20}) {
    dmx::DMXfilename& lamp = show.fixtures.Add();
    lamp.Filename = "Lamp.dmx";
    lamp.StartChannel = static_cast<std::int16_t>(start);
    lamp.NumberOf = 5;
  }
  for (const char* wait : {"00:30.0", "00:30.0"}) {
    dmx::Scene& scene = show.scenes.Add();
    scene.Loops = 1;
    scene.Steps.Add({"00:00.0", wait, {}});
  }
  std::ofstream(folder_ / "walk.shw", std::ios::binary) << dmx::ShowText(show);
  station_->Lights().OpenShow(folder_ / "walk.shw", nullptr);
  Go(100ms);
  station_->Lights().PlayShow();
  station_->Lights().MoveFader(7, 200);
  station_->Lights().MoveFader(300, 20);
  station_->Lights().TakeInHand({{300, 90}});
  dmx::LightEffect eight;
  eight.kind = dmx::EffectKind::Eight;
  eight.rate = {dmx::EffectRate::Unit::Hertz, 0.25};
  eight.fixtures = {2, 1};
  station_->LiveLights().Start(eight);
  station_->Lights().SetGrandMaster(128);
  station_->Lights().SetBlackout(dmx::OutputStage::Blackout::On);
  Go(40s);
  FallAndStart();
  Go(100ms);
  const LightView& view = station_->Lights().View();
  EXPECT_EQ(view.levels[6], 200);
  EXPECT_EQ(view.levels[299], 90);
  EXPECT_EQ(station_->LiveLights().View().effects, std::vector{eight});
  station_->LiveLights().LetAllGo();
  Go(100ms);
  EXPECT_EQ(station_->Lights().View().levels[299], 20) << "what lay beneath the hand";
  EXPECT_EQ(view.grand_master, 128);
  EXPECT_TRUE(view.blackout);
  ASSERT_NE(view.show.show, nullptr);
  EXPECT_EQ(view.show.state, dmx::ShowPlayer::State::Playing);
  EXPECT_NEAR(std::chrono::duration<double>(view.show.position).count(), 40, 1);
  EXPECT_EQ(view.show.place.scene, 2);
}

}  // namespace
}  // namespace app
