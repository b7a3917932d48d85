// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WorkstationView.h"
#include "app/testing/AllParts.h"

#include <gtest/gtest.h>

#include "app/tests/Evening.h"

namespace app {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::State;

class DeckTest : public testing::Evening {
 protected:
  DeckTest() { StartUp(); }
};

TEST_F(DeckTest, ALoadedTrackStandsAtItsStart) {
  Load(1, "a.mp3");
  EXPECT_EQ(Deck(1).state, State::Stopped);
  EXPECT_EQ(Deck(1).artist, "Artist of a.mp3");
  EXPECT_EQ(Deck(1).title, "Title of a.mp3");
  EXPECT_EQ(Deck(1).bpm, 120.5);
  EXPECT_EQ(Deck(1).length, seconds(100));
  EXPECT_EQ(Deck(1).position, seconds(0));
}

TEST_F(DeckTest, PositionIsWhatIsHeard) {
  Load(2, "a.mp3");
  Play(2);
  Advance(milliseconds(2500));
  EXPECT_EQ(Deck(2).state, State::Playing);
  EXPECT_EQ(Deck(2).position, milliseconds(2500));
}

TEST_F(DeckTest, AFileThatCouldBeReadNoFurtherIsToldOnceAndUntilAnotherTrackIsThere) {
  engine_.AddFile("/stick/torn.mp3", {.seconds = 83, .cut_short = true});
  Load(1, "a.mp3");
  EXPECT_TRUE(station_->View().notices.empty());
  Load(1, "/stick/torn.mp3");
  Play(1);
  Advance(seconds(5));
  const auto told = station_->View().notices;
  ASSERT_EQ(told.size(), 1U);
  EXPECT_EQ(told[0].text, "Deck 1 can read \"torn.mp3\" no further: it ends at 01:23.");
  EXPECT_EQ(told[0].kind, Notice::Kind::Warning);
  Load(1, "b.mp3");
  EXPECT_TRUE(station_->View().notices.empty());
}

TEST_F(DeckTest, PauseStandsStillAndResumeGoesOn) {
  Load(1, "a.mp3");
  Play(1);
  Advance(seconds(3));
  station_->Decks()[1].Do(&DeckStation::Pause);
  Settle();
  Advance(seconds(5));
  EXPECT_EQ(Deck(1).state, State::Paused);
  EXPECT_EQ(Deck(1).position, seconds(3));
  station_->Decks()[1].Do(&DeckStation::Resume);
  Settle();
  Advance(seconds(1));
  EXPECT_EQ(Deck(1).position, seconds(4));
}

TEST_F(DeckTest, StopGoesToTheStartOfTheSameTrack) {
  Load(1, "a.mp3");
  Play(1);
  Advance(seconds(3));
  station_->Decks()[1].Do(&DeckStation::Stop);
  Settle();
  EXPECT_EQ(Deck(1).state, State::Stopped);
  EXPECT_EQ(Deck(1).position, seconds(0));
  EXPECT_EQ(Deck(1).title, "Title of a.mp3");
  Play(1);
  Advance(seconds(1));
  EXPECT_EQ(Deck(1).position, seconds(1));
}

TEST_F(DeckTest, TheLengthStaysWhileAStoppedTrackIsOpenedAgain) {
  Load(1, "a.mp3");
  Play(1);
  engine_.HoldPreparing();
  station_->Decks()[1].Do(&DeckStation::Stop);
  Settle();
  EXPECT_EQ(Deck(1).length, seconds(100));
  station_->Decks()[1].Do(&DeckStation::Play);
  Settle();
  engine_.FinishPreparing();
  Settle();
  EXPECT_EQ(Deck(1).state, State::Playing);
}

TEST_F(DeckTest, SeekMovesByTheFilesOwnRate) {
  engine_.AddFile("odd.mp3", {.seconds = 10, .sample_rate = 22050, .channels = 1});
  Load(1, "odd.mp3");
  Play(1);
  station_->Decks()[1].Do(&DeckStation::Seek, milliseconds(7500));
  Settle();
  EXPECT_EQ(Deck(1).position, milliseconds(7500));
  station_->Decks()[1].Do(&DeckStation::Seek, -seconds(1));
  Settle();
  EXPECT_EQ(Deck(1).position, seconds(0));
}

TEST_F(DeckTest, AfterItsEndATrackPlaysFromTheStart) {
  Load(1, "a.mp3");
  Play(1);
  Advance(seconds(101));
  EXPECT_EQ(Deck(1).state, State::Ended);
  EXPECT_EQ(Deck(1).position, seconds(100));
  Play(1);
  Advance(seconds(2));
  EXPECT_EQ(Deck(1).state, State::Playing);
  EXPECT_EQ(Deck(1).position, seconds(2));
}

TEST_F(DeckTest, AnEndThatIsStillHeardDoesNotEndTheNextPlaying) {
  engine_.SetLatency(milliseconds(60));
  Load(1, "a.mp3");
  for (const seconds start : {seconds(0), seconds(90)}) {
    Play(1);
    Advance(seconds(101));
    if (start > seconds(0)) station_->Decks()[1].Do(&DeckStation::Seek, start);
    Play(1);
    EXPECT_EQ(Deck(1).state, State::Playing);
    Advance(seconds(1));
    EXPECT_EQ(Deck(1).position, start + seconds(1));
  }
}

TEST_F(DeckTest, ASeekThatOvertakesTheEndPlaysOn) {
  engine_.SetLatency(milliseconds(60));
  Load(1, "a.mp3");
  Play(1);
  clock_.Advance(milliseconds(100'030));
  station_->Decks()[1].Do(&DeckStation::Seek, seconds(10));
  Settle();
  Advance(seconds(1));
  Settle();
  EXPECT_EQ(Deck(1).state, State::Playing);
  EXPECT_EQ(Deck(1).position, seconds(11));
}

TEST_F(DeckTest, ASeekAfterTheEndStandsThere) {
  Load(1, "a.mp3");
  Play(1);
  Advance(seconds(101));
  station_->Decks()[1].Do(&DeckStation::Seek, seconds(50));
  Settle();
  EXPECT_EQ(Deck(1).state, State::Stopped);
  Play(1);
  Advance(seconds(1));
  EXPECT_EQ(Deck(1).position, seconds(51));
}

TEST_F(DeckTest, VolumeAndTempoStayOnTheDeckForTheNextTrack) {
  station_->Decks()[1].Adjust(&DeckStation::SetVolume, 130);
  station_->Decks()[1].SetTempo(4);
  Load(1, "a.mp3");
  Play(1);
  Advance(seconds(10));
  EXPECT_EQ(Deck(1).volume, 100);
  EXPECT_EQ(Deck(1).tempo_percent, 4);
  EXPECT_EQ(Deck(1).position, milliseconds(10400));
}

TEST_F(DeckTest, ASilentDeckShowsTheFloorAndAPlayingOneItsLevel) {
  Load(1, "a.mp3");
  EXPECT_EQ(Deck(1).left_db, -90);
  Play(1);
  EXPECT_NEAR(Deck(1).left_db, -6.02, 0.01);
  EXPECT_NEAR(Deck(1).right_db, -12.04, 0.01);
}

TEST_F(DeckTest, DecksDoNotDisturbEachOther) {
  Load(1, "a.mp3");
  Play(1);
  Load(2, "none.mp3");
  Load(3, "b.mp3");
  Play(3);
  Advance(seconds(1));
  EXPECT_EQ(Deck(1).position, seconds(1));
  EXPECT_EQ(Deck(2).state, State::Empty);
  EXPECT_EQ(Deck(3).position, seconds(1));
}

TEST_F(DeckTest, AFileThatCannotBePlayedLeavesTheDeckEmptyWithASentence) {
  Load(1, "a.mp3");
  Load(1, "none.mp3");
  EXPECT_EQ(Deck(1).state, State::Empty);
  EXPECT_EQ(Deck(1).filename, "none.mp3");
  EXPECT_EQ(Deck(1).message, "There is no file \"none.mp3\".");
  EXPECT_EQ(engine_.Streams(), 0);
}

TEST_F(DeckTest, AFileThatCannotBePlayedDoesNotStopTheOneThatPlays) {
  Load(1, "a.mp3");
  Play(1);
  Load(1, "none.mp3");
  Advance(seconds(1));
  EXPECT_EQ(Deck(1).state, State::Playing);
  EXPECT_EQ(Deck(1).title, "Title of a.mp3");
  EXPECT_EQ(Deck(1).position, seconds(1));
  EXPECT_EQ(Deck(1).message, "There is no file \"none.mp3\".");
}

TEST_F(DeckTest, ARowThatIsNotThereLeavesTheDeckAsItIs) {
  Load(1, "a.mp3");
  station_->Decks()[1].Load(Music(), 1);
  Settle();
  EXPECT_EQ(Deck(1).state, State::Stopped);
}

TEST_F(DeckTest, TheSentenceGoesWithTheNextTrack) {
  Load(1, "none.mp3");
  Load(1, "a.mp3");
  EXPECT_EQ(Deck(1).message, "");
}

class PreparingTest : public DeckTest {
 protected:
  PreparingTest() { engine_.HoldPreparing(); }
  void Ready() {
    ASSERT_TRUE(engine_.FinishPreparing());
    Settle();
  }
};

TEST_F(PreparingTest, WhatPlaysGoesOnUntilTheNewFileIsReady) {
  Load(1, "a.mp3");
  Ready();
  Play(1);
  Load(1, "b.mp3");
  Advance(seconds(2));
  EXPECT_EQ(Deck(1).state, State::Loading);
  EXPECT_EQ(Deck(1).title, "Title of b.mp3");
  EXPECT_EQ(Deck(1).position, seconds(2));
  Ready();
  EXPECT_EQ(Deck(1).state, State::Stopped);
  EXPECT_EQ(Deck(1).position, seconds(0));
  EXPECT_EQ(engine_.Streams(), 1);
}

TEST_F(PreparingTest, ANewerLoadOvertakesAnOlderOne) {
  Load(1, "a.mp3");
  Load(1, "b.mp3");
  Ready();
  EXPECT_EQ(Deck(1).state, State::Loading);
  Ready();
  EXPECT_EQ(Deck(1).title, "Title of b.mp3");
  EXPECT_EQ(engine_.Streams(), 1);
}

TEST_F(PreparingTest, PlayWhileLoadingPlaysAsSoonAsTheFileIsReady) {
  Load(1, "a.mp3");
  Play(1);
  EXPECT_EQ(Deck(1).state, State::Loading);
  Ready();
  EXPECT_EQ(Deck(1).state, State::Playing);
}

TEST_F(PreparingTest, PauseTakesThatBack) {
  Load(1, "a.mp3");
  Play(1);
  station_->Decks()[1].Do(&DeckStation::Pause);
  Ready();
  EXPECT_EQ(Deck(1).state, State::Stopped);
}

TEST_F(PreparingTest, AnAnswerAfterTheEveningIsDropped) {
  Load(1, "a.mp3");
  station_.reset();
  EXPECT_TRUE(engine_.FinishPreparing());
  EXPECT_EQ(engine_.Streams(), 0);
}

TEST_F(PreparingTest, NoCommandWaitsForTheConductor) {
  catalogue::track_table table(catalogue::TrackColumns());
  table.AddRow(std::vector<std::string_view>{"", "", "", "a.mp3"});
  const int calls = engine_.Calls();
  for (int deck = 1; deck <= kDecks; ++deck) {
    station_->Decks()[deck].Load(table, 1);
    station_->Decks()[deck].Do(&DeckStation::Play);
    station_->Decks()[deck].Do(&DeckStation::Pause);
    station_->Decks()[deck].Do(&DeckStation::Resume);
    station_->Decks()[deck].Do(&DeckStation::Seek, seconds(1));
    station_->Decks()[deck].Adjust(&DeckStation::SetVolume, 50);
    station_->Decks()[deck].Adjust(&DeckStation::SetPreVolume, 50);
    station_->Decks()[deck].SetTempo(1);
    station_->Decks()[deck].Do(&DeckStation::Stop);
  }
  station_->Outputs().Set(3, {2, 0});
  station_->Collections().Intake().Add({.list = ListId::Catalogue, .paths = {"a.mp3"}}, {});
  station_->PumpWindow();
  EXPECT_EQ(station_->View().decks[0].state, State::Empty);
  EXPECT_EQ(engine_.Calls(), calls);
}

TEST_F(DeckTest, WhicheverCallOfALoadFailsTheNextLoadPlaysAndTheOtherDeckGoesOn) {
  Store("Devices", "Device3", "2");
  StartUp();
  Load(2, "b.mp3");
  Play(2);
  for (int failing = 1; failing <= 45; ++failing) {
    engine_.FailCall(failing);
    Load(1, "a.mp3");
    Play(1);
    station_->Decks()[1].Do(&DeckStation::Stop);
    Settle();
    Load(1, "c.flac");
    Play(1);
    ASSERT_EQ(Deck(1).state, State::Playing) << "after call " << failing << " failed";
    ASSERT_EQ(Deck(2).state, State::Playing) << "after call " << failing << " failed";
  }
}

}  // namespace
}  // namespace app
