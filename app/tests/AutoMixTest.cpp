// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WorkstationView.h"
#include "app/lists/AutoMix.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/lists/AutoLevel.h"
#include "app/tests/Evening.h"

namespace app {
namespace {

using namespace std::chrono_literals;
using std::chrono::microseconds;

DeckView Playing(microseconds length, std::optional<microseconds> end_mix_point = {}) {
  DeckView deck;
  deck.state = DeckView::State::Playing;
  deck.length = length;
  deck.has_mix_points = end_mix_point.has_value();
  deck.end_mix_point = end_mix_point.value_or(0s);
  deck.found.end = 95s;
  return deck;
}

TEST(MixerHands, TheVolumeIsFaderTimesCrossfader) {
  MixerHands mixer{.faders = {80, 50}, .crossfader = 50, .curve = decks::CrossfaderCurve::Smooth};
  EXPECT_EQ(mixer.VolumeOf(1), 40);
  EXPECT_EQ(mixer.VolumeOf(2), 50);
  mixer.crossfader = -100;
  EXPECT_EQ(mixer.VolumeOf(2), 0);
}

TEST(MixPlanTest, ADeckHandsOverAtItsEndMixPoint) {
  const MixWishes at_points{true, 8s, true}, at_end{true, 8s, false};
  DeckView fast = Playing(100s, 80s);
  fast.speed = 2;
  DeckView late = Playing(100s, 80s);
  late.position = 81s;
  const struct {
    const char* what;
    DeckView deck;
    MixWishes wishes;
    MixPlan plan;
  } kPlans[] = {
      {"what sound is left is faded", Playing(100s, 80s), at_points, {80s, 8s}},
      {"no longer than it sounds", Playing(100s, 92s), at_points, {92s, 3s}},
      {"where nothing is left, nothing", Playing(100s, 95s), at_points, {95s, 0s}},
      {"without points it ends with the file", Playing(100s), at_points, {92s, 8s}},
      {"as wished", Playing(100s, 80s), at_end, {92s, 8s}},
      {"a faster deck has less time", fast, {true, 8s, true}, {80s, 7500ms}},
      {"past its point it plays on", late, at_points, {100s, 0s}},
      {"a jingle is heard once", Playing(5s), at_points, {5s, 0s}},
      {"no fade is wished", Playing(100s), {true, 0s, false}, {100s, 0s}},
  };
  for (const auto& plan : kPlans) {
    const MixPlan got = PlanMix(plan.deck, plan.wishes);
    EXPECT_EQ(got.at, plan.plan.at) << plan.what;
    EXPECT_EQ(got.fade, plan.plan.fade) << plan.what;
  }
}

/// Two decks, playlists with three files of 100 s, and somebody who lets the mixer do it.
class AutoMixTest : public testing::Evening {
 protected:
  AutoMixTest() {
    Store("Settings", "Automix", "True");
    Store("Settings", "MixPoints", "False");
    Store("Mixer", "MixTime", "4");
    StartUp();
  }
  void List(int playlist, const std::vector<std::string>& files) {
    for (const std::string& file : files) {
      Playlist(playlist).AddRow(std::vector<std::string_view>{"Artist", "Title of " + file, "01:40", file});
    }
    station_->Lists().Follow();
    Settle();
  }
  void Begin(const std::string& file) {
    Load(1, file);
    Play(1);
  }
  void Go(std::chrono::milliseconds time) {
    for (; time > 0ms; time -= 20ms) {
      Advance(20ms);
      workers_.RunAll();
      station_->PumpWindow();
    }
  }
  [[nodiscard]] std::string Plays() {
    std::string plays;
    for (const int deck : {1, 2}) {
      if (Deck(deck).state == testing::State::Playing) plays += Deck(deck).filename + " ";
    }
    return plays;
  }
  [[nodiscard]] int Crossfader() { return station_->Lists().View().crossfader; }
};

TEST_F(AutoMixTest, TheNextTrackComesWhenTheFirstOneEndsAndTheCrossfaderGoesOver) {
  List(1, {"a.mp3"});
  List(2, {"b.mp3"});
  Begin("a.mp3");
  Go(30s);
  EXPECT_EQ(Deck(2).state, testing::State::Empty) << "it is too early";
  Go(65s);
  EXPECT_EQ(Deck(2).state, testing::State::Stopped);
  EXPECT_EQ(Plays(), "a.mp3 ");
  Go(3s);
  EXPECT_EQ(Plays(), "a.mp3 b.mp3 ");
  EXPECT_NEAR(Crossfader(), 0, 40);
  Go(2500ms);
  EXPECT_EQ(Plays(), "b.mp3 ");
  EXPECT_EQ(Crossfader(), 100);
  EXPECT_EQ(Deck(2).volume, 100);
}

TEST_F(AutoMixTest, OneListIsEnoughAndItsEndIsQuiet) {
  List(1, {"a.mp3", "b.mp3", "c.flac", "a.mp3"});
  Begin("a.mp3");
  Go(97s);
  EXPECT_EQ(Plays(), "a.mp3 b.mp3 ");
  Go(97s);
  EXPECT_EQ(Plays(), "c.flac b.mp3 ");
  Go(200s);
  EXPECT_EQ(Plays(), "") << "each was played once";
  EXPECT_EQ(station_->View().notice, "");
}

TEST_F(AutoMixTest, WhatComesNextAndWhenIsToldWithTheListsTheHandsAndTheMix) {
  const auto told = [this] {
    const ComingTrack& coming = station_->Lists().View().coming;
    const auto seconds = [](microseconds in) { return std::chrono::round<std::chrono::seconds>(in).count(); };
    return coming.title + (coming.in ? " in " + std::to_string(seconds(*coming.in)) : "");
  };
  List(1, {"a.mp3"});
  List(2, {"b.mp3"});
  EXPECT_EQ(told(), "") << "nothing plays";
  Begin("a.mp3");
  Go(30s);
  EXPECT_EQ(told(), "Title of b.mp3 in 66") << "of the lists, long before it is loaded";
  Playlist(2).AddRow(std::vector<std::string_view>{"Artist", "Put before", "01:40", "c.flac"});
  Playlist(2).RemoveRow(1);
  station_->Lists().Follow();
  Go(1s);
  EXPECT_EQ(told(), "Put before in 65");
  Load(2, "b.mp3");
  Go(1s);
  EXPECT_EQ(told(), "Title of b.mp3 in 64") << "a hand has made it ready";
  station_->Decks()[1].Do(&DeckStation::Seek, microseconds(90s));
  Go(1s);
  EXPECT_EQ(told(), "Title of b.mp3 in 5");
  Go(6s);
  EXPECT_EQ(told(), "Title of b.mp3 in 0") << "it is being mixed";
  Go(5s);
  EXPECT_EQ(told(), "Put before in 90");
  station_->Lists().SetAutomix(false);
  Go(1s);
  EXPECT_EQ(told(), "");
}

TEST_F(AutoMixTest, WhatCannotBePlayedIsPassedOverWithASentence) {
  List(1, {"gone.mp3", "b.mp3"});
  Begin("a.mp3");
  Go(98s);
  EXPECT_EQ(Plays(), "a.mp3 b.mp3 ");
  EXPECT_THAT(station_->View().notice, ::testing::HasSubstr("gone.mp3"));
}

TEST_F(AutoMixTest, AFileThatNeverComesIsGivenUpInTime) {
  List(1, {"slow.mp3", "b.mp3"});
  engine_.AddFile("slow.mp3");
  Begin("a.mp3");
  engine_.HoldPreparing();
  Go(70s);  // "slow.mp3" is given up after twenty seconds, "b.mp3" is the next
  while (engine_.FinishPreparing()) Go(20ms);
  Go(28s);
  EXPECT_EQ(Plays(), "a.mp3 b.mp3 ");
}

TEST_F(AutoMixTest, WhatAHandHasMadeReadyIsPlayedNext) {
  List(1, {"b.mp3"});
  Begin("a.mp3");
  Load(2, "c.flac");
  Go(98s);
  EXPECT_EQ(Plays(), "a.mp3 c.flac ");
}

TEST_F(AutoMixTest, AHandMayRepeatWhatWasPlayed) {
  List(1, {"never.mp3"});
  for (const char* file : {"b.mp3", "c.flac"}) {
    Load(2, file);
    Play(2);
    Go(40s);
    station_->Decks()[2].Do(&DeckStation::Stop);
  }
  Begin("a.mp3");
  Load(2, "b.mp3");
  Go(98s);
  EXPECT_EQ(Plays(), "a.mp3 b.mp3 ");
}

TEST_F(AutoMixTest, AnotherMixTimeRepeatsNothing) {
  List(1, {"a.mp3", "b.mp3"});
  Begin("a.mp3");
  Go(1s);
  station_->Lists().SetMixTime(60);  // so it is time to load the next one
  Go(2s);
  EXPECT_EQ(Deck(2).filename, "b.mp3");
}

TEST_F(AutoMixTest, AHandOnTheCrossfaderKeepsIt) {
  List(1, {"b.mp3"});
  Begin("a.mp3");
  Go(97s);
  station_->Lists().MoveMixer({{100, 100}, -50, decks::CrossfaderCurve::Smooth}, MovedByHand::Crossfader);
  Go(20s);
  EXPECT_EQ(Crossfader(), -50);
  EXPECT_EQ(Deck(2).volume, 50);
}

TEST_F(AutoMixTest, AFaderThatIsMovedMeanwhileIsNoHandOnTheCrossfader) {
  List(1, {"b.mp3"});
  Begin("a.mp3");
  Go(98s);
  station_->Lists().MoveMixer({{100, 60}, -100, decks::CrossfaderCurve::Smooth}, MovedByHand::Other);
  Go(4s);
  EXPECT_EQ(Crossfader(), 100);
  EXPECT_EQ(Deck(2).volume, 60);
}

TEST_F(AutoMixTest, AHandThatPausesTheDeckStopsThePlanUntilItPlaysAgain) {
  List(1, {"b.mp3"});
  Begin("a.mp3");
  Go(95s);
  station_->Decks()[1].Do(&DeckStation::Pause);
  Go(60s);
  EXPECT_EQ(Plays(), "");
  station_->Decks()[1].Do(&DeckStation::Resume);
  Go(3s);
  EXPECT_EQ(Plays(), "a.mp3 b.mp3 ");
}

TEST_F(AutoMixTest, SwitchedOffNothingComes) {
  List(1, {"b.mp3"});
  Begin("a.mp3");
  Go(80s);
  station_->Lists().SetAutomix(false);
  Go(40s);
  EXPECT_EQ(Plays(), "");
  EXPECT_EQ(Stored("Settings", "Automix"), "False");
}

TEST_F(AutoMixTest, AHandThatSwitchesItOnInSilenceBeginsTheMusic) {
  List(1, {"gone.mp3", "b.mp3"});
  Go(5s);
  EXPECT_EQ(Plays(), "") << "as it was stored, nothing begins by itself";
  station_->Lists().SetAutomix(true);
  Go(1s);
  EXPECT_EQ(Plays(), "b.mp3 ");
  EXPECT_EQ(Crossfader(), -100);
  station_->Decks()[1].Do(&DeckStation::Stop);
  Load(2, "c.flac");
  Go(5s);
  EXPECT_EQ(Plays(), "") << "who stops a deck has it so";
  station_->Lists().SetAutomix(true);
  Go(1s);
  EXPECT_EQ(Plays(), "c.flac ") << "what a hand has made ready goes first";
  EXPECT_EQ(Crossfader(), 100);
}

TEST_F(AutoMixTest, SwitchedOnItLeavesAPausedDeckAndEmptyListsAlone) {
  List(1, {"b.mp3"});
  Begin("a.mp3");
  station_->Decks()[1].Do(&DeckStation::Pause);
  Go(1s);
  station_->Lists().SetAutomix(true);
  Go(5s);
  EXPECT_EQ(Plays(), "");
  station_->Decks()[1].Do(&DeckStation::Stop);
  while (Playlist(1).Rows() > 0) Playlist(1).RemoveRow(1);
  List(2, {});
  station_->Lists().SetAutomix(true);
  Go(1s);
  List(2, {"c.flac"});
  Go(5s);
  EXPECT_EQ(Plays(), "") << "it begins when it is switched on";
}

TEST_F(AutoMixTest, TheSecondDeckHandsBackToTheFirst) {
  List(1, {"c.flac"});
  List(2, {"b.mp3"});
  Load(2, "a.mp3");
  Play(2);
  Go(98s);
  EXPECT_EQ(Plays(), "c.flac a.mp3 ");
  Go(3s);
  EXPECT_EQ(Crossfader(), -100);
}

/// The same, and the mixer brings the tempos together.
class MatchedMixTest : public AutoMixTest {
 protected:
  MatchedMixTest() {
    Store("Settings", "AutoBPM", "True");
    station_.reset();
    StartUp();
  }
  /// The first track has 120.5 beats a minute, and the second one comes in.
  void Mix(std::string_view second_bpm) {
    Playlist(1).AddRow(std::vector<std::string_view>{"", "", "01:40", "b.mp3", second_bpm});
    station_->Lists().Follow();
    Begin("a.mp3");
    Go(96500ms);
  }
  static constexpr float kMatched = 100 * (120.5F / 125 - 1);
};

TEST_F(MatchedMixTest, TheNextTrackComesInTheTempoOfTheOther) {
  const struct {
    const char* bpm;
    float percent;
  } kSeconds[] = {{"125.00", kMatched}, {"62.50", kMatched}, {"140.00", 0}, {"", 0}};
  for (const auto& second : kSeconds) {
    station_.reset();
    StartUp();
    Mix(second.bpm);
    EXPECT_EQ(Plays(), "a.mp3 b.mp3 ") << second.bpm;
    EXPECT_NEAR(Deck(2).tempo_percent, second.percent, 0.01) << second.bpm;
    EXPECT_EQ(station_->View().notice, "") << second.bpm;
  }
}

TEST_F(MatchedMixTest, AfterTheMixItGlidesToItsOwnTempo) {
  Mix("125.00");
  Go(4s);
  EXPECT_FALSE(Deck(2).synced) << "the other one is silent";
  EXPECT_LT(Deck(2).tempo_percent, -3);
  for (float before = Deck(2).tempo_percent; Deck(2).tempo_percent != 0; before = Deck(2).tempo_percent) {
    Go(200ms);
    ASSERT_NEAR(Deck(2).tempo_percent - before, 0.06, 0.06) << "nothing that is heard";
  }
}

TEST_F(MatchedMixTest, AHandOnTheTempoKeepsIt) {
  Mix("125.00");
  Go(4s);
  station_->Decks()[2].SetTempo(1);
  Go(20s);
  EXPECT_EQ(Deck(2).tempo_percent, 1);
}

TEST_F(MatchedMixTest, WhatWasBorrowedIsNotKeptForAnotherFile) {
  station_->Decks()[2].SetTempo(2);
  Mix("125.00");
  Go(4s);
  Load(2, "c.flac");
  EXPECT_EQ(Deck(2).tempo_percent, 2);
}

TEST_F(MatchedMixTest, AMixThatDoesNotComeLeavesTheTempoAsItWas) {
  station_->Lists().SetMixTime(3);
  Mix("125.00");
  ASSERT_NEAR(Deck(2).tempo_percent, kMatched, 0.01);
  ASSERT_EQ(Plays(), "a.mp3 ") << "half a second before";
  station_->Decks()[1].Do(&DeckStation::Pause);
  Go(1s);
  EXPECT_EQ(Deck(2).tempo_percent, 0);
}

/// Two decks that take a gain, and the one who levels them.
class AutoLevelTest : public ::testing::Test, public MixingDecks {
 protected:
  AutoLevelTest() {
    levels_.Choose({.on = true, .match_gain = true, .gain_range = {12}});
    deck_.filename = "a.mp3";
    deck_.state = testing::State::Stopped;
    deck_.loudness = {true, {-9}, {0}};
  }
  void Go(std::chrono::milliseconds time) {
    for (; time > 0ms; time -= 10ms) {
      clock_.Advance(10ms);
      levels_.Tick(view_);
    }
  }
  void Load(int, const catalogue::track_table&, int) override {}
  void Seek(int, microseconds) override {}
  void Play(int) override {}
  void Pause(int) override {}
  void Stop(int) override {}
  void SetVolume(int, int) override {}
  void Glide(int, double, std::chrono::milliseconds) override {}
  void SetMixing(int, bool) override {}
  bool StartWith(int, int, microseconds) override { return false; }
  bool Started(int) override { return false; }
  void CancelStart(int) override {}
  microseconds MatchTempo(int, microseconds place, int) override { return place; }
  void SetGain(int deck, support::Decibels gain) override {
    view_.decks[static_cast<std::size_t>(deck - 1)].gain = gain;
  }

  support::testing::FakeClock clock_;
  WorkstationView view_;
  DeckView& deck_ = view_.decks[0];
  AutoLevel levels_{*this, clock_};
};

TEST_F(AutoLevelTest, ATrackThatNobodyHearsTakesItsGainAtOnce) {
  Go(10ms);
  EXPECT_EQ(deck_.gain.value, -9);
  EXPECT_EQ(view_.decks[1].gain.value, 0) << "nothing is known of it";
}

TEST_F(AutoLevelTest, TheMixerNeedNotBeOnAndWhatIsListenedToIsLevelledToo) {
  levels_.Choose({.on = false, .match_gain = true, .gain_range = {12}});
  for (DeckView& deck : view_.decks) deck = deck_;
  Go(10ms);
  EXPECT_EQ(deck_.gain.value, -9);
  EXPECT_EQ(view_.decks[3].gain.value, -9);
  EXPECT_EQ(view_.decks[2].gain.value, 0) << "songs have a level of their own";
}

TEST_F(AutoLevelTest, OneThatHasJustBegunTakesItQuicklyAndOneThatPlaysUnnoticed) {
  deck_.state = testing::State::Playing;
  Go(500ms);
  EXPECT_EQ(deck_.gain.value, -9);
  Go(5s);
  deck_.loudness.integrated = {-11};
  Go(500ms);
  EXPECT_NEAR(deck_.gain.value, -8.5, 0.02);
}

TEST_F(AutoLevelTest, NotWishedOrNotMeasuredItStaysAsItIs) {
  levels_.Choose({.on = true, .match_gain = false, .gain_range = {12}});
  Go(1s);
  EXPECT_EQ(deck_.gain.value, 0);
  levels_.Choose({.on = true, .match_gain = true, .gain_range = {12}});
  deck_.loudness.valid = false;
  Go(1s);
  deck_.loudness.valid = true;
  deck_.state = testing::State::Loading;  // the loudness is that of what still sounds
  Go(1s);
  EXPECT_EQ(deck_.gain.value, 0);
}

}  // namespace
}  // namespace app
