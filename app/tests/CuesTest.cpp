// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Cues, loops and jumps of a deck, as hands command them and the engine is told.

#include <gtest/gtest.h>

#include "app/sound/DeckCues.h"
#include "app/sound/DeckStation.h"
#include "app/tests/Evening.h"
#include "catalogue/testing/MemorySideStore.h"

namespace app::testing {
namespace {

using namespace std::chrono_literals;

/// A track of 120.5 beats a minute on deck 1, in a house that keeps what hands mark.
class CuesTest : public Evening {
 protected:
  CuesTest() {
    side_store_ = &store_;
    StartUp();
    Load(1, "a.mp3");
    workers_.RunAll();
    Settle();
  }
  template <class... Wanted, class... Given>
  void Do(void (DeckCues::*command)(Wanted...), Given... given) {
    station_->Decks()[1].Do(command, given...);
    Settle();
    workers_.RunAll();
    Settle();
  }
  void Seek(std::chrono::milliseconds place) {
    station_->Decks()[1].Do(&DeckStation::Seek, std::chrono::microseconds(place));
    Settle();
  }
  [[nodiscard]] const CuesView& Cues() { return Deck(1).cues; }
  [[nodiscard]] State Stands() { return Deck(1).state; }
  [[nodiscard]] double At() { return std::chrono::duration<double>(Deck(1).position).count(); }
  [[nodiscard]] std::optional<music::Loop> Told() {
    return loops_.LoopState(station_->View().decks[0].state == State::Empty ? 0 : Stream()).loop;
  }
  [[nodiscard]] decks::StreamHandle Stream() {
    return loops_.states.empty() ? 0 : loops_.states.rbegin()->first;
  }
  [[nodiscard]] std::string Said() {
    const auto& notices = station_->View().notices;
    return notices.empty() ? "" : notices.back().text;
  }

  catalogue::testing::MemorySideStore store_;
};

TEST_F(CuesTest, AHotCueIsSetJumpedToHeldNamedAndTakenAway) {
  Seek(10s);
  Do(&DeckCues::Hot, 2, true);
  Do(&DeckCues::Hot, 2, false);
  ASSERT_TRUE(Cues().marked && Cues().marked->hot[2]);
  EXPECT_EQ(Stands(), State::Stopped) << "setting plays nothing";
  Seek(30s);
  Do(&DeckCues::Hot, 2, true);
  EXPECT_EQ(Stands(), State::Playing) << "heard as long as it is held";
  Advance(500ms);
  Do(&DeckCues::Hot, 2, false);
  EXPECT_EQ(Stands(), State::Paused);
  EXPECT_NEAR(At(), 10, 0.001);
  Do(&DeckCues::Hot, 2, true);
  Do(&DeckCues::Keep);
  Do(&DeckCues::Hot, 2, false);
  EXPECT_EQ(Stands(), State::Playing) << "Play was pressed meanwhile";
  Seek(50s);
  Do(&DeckCues::Hot, 2, true);
  Do(&DeckCues::Hot, 2, false);
  EXPECT_NEAR(At(), 10, 0.1);
  EXPECT_EQ(Stands(), State::Playing);
  Do(&DeckCues::Name, 2, std::string("Ref\x01rain\n"));
  Do(&DeckCues::Colour, 2, 99);
  EXPECT_EQ(Cues().marked->hot[2]->name, "Ref rain");
  EXPECT_EQ(Cues().marked->hot[2]->colour, 0);
  Do(&DeckCues::Delete, 2);
  EXPECT_FALSE(Cues().marked->hot[2]);
  for (const int none : {-1, 8, 999}) Do(&DeckCues::Hot, none, true);
}

TEST_F(CuesTest, TheMainCueIsSetReturnedToAndHeardWhileHeld) {
  Seek(20s);
  Do(&DeckCues::Cue, true);
  Do(&DeckCues::Cue, false);
  EXPECT_EQ(Stands(), State::Stopped);
  Play(1);
  Advance(2s);
  Do(&DeckCues::Cue, true);
  Do(&DeckCues::Cue, false);
  EXPECT_EQ(Stands(), State::Paused);
  EXPECT_NEAR(At(), 20, 0.001);
  Do(&DeckCues::Cue, true);
  EXPECT_EQ(Stands(), State::Playing);
  Advance(700ms);
  Do(&DeckCues::Cue, false);
  EXPECT_EQ(Stands(), State::Paused);
  EXPECT_NEAR(At(), 20, 0.001);
}

TEST_F(CuesTest, AStoppedDeckGoesToItsCueAndOnlyTheHeldPadLetsGo) {
  Seek(20s);
  Do(&DeckCues::Cue, true);
  Do(&DeckCues::Cue, false);
  station_->Decks()[1].Do(&DeckStation::Stop);
  Settle();
  Do(&DeckCues::Cue, true);
  EXPECT_NEAR(At(), 20, 0.001);
  EXPECT_EQ(Cues().marked->main, std::chrono::microseconds(20s));
  Do(&DeckCues::Cue, false);
  Seek(30s);
  Do(&DeckCues::Hot, 0, true);
  Do(&DeckCues::Hot, 0, false);
  Do(&DeckCues::Hot, 0, true);
  EXPECT_EQ(Stands(), State::Playing);
  Do(&DeckCues::Hot, 1, false);
  Do(&DeckCues::Cue, false);
  EXPECT_EQ(Stands(), State::Playing) << "another hand lets go";
  Do(&DeckCues::Hot, 0, false);
  EXPECT_EQ(Stands(), State::Paused);
}

TEST_F(CuesTest, CuesComeBackWithTheFileAndOneSetBeforeTheyWereReadTakesNoneAway) {
  Seek(10s);
  Do(&DeckCues::Hot, 0, true);
  Do(&DeckCues::Hot, 0, false);
  Load(1, "b.mp3");
  workers_.RunAll();
  Settle();
  EXPECT_FALSE(Cues().marked);
  Load(1, "a.mp3");
  station_->Decks()[1].Do(&DeckCues::Hot, 0, true);  // is taken already, which nobody knows yet
  station_->Decks()[1].Do(&DeckCues::Hot, 5, true);  // faster than the disk
  Settle();
  workers_.RunAll();
  Settle();
  ASSERT_TRUE(Cues().marked);
  EXPECT_TRUE(Cues().marked->hot[0]);
  EXPECT_TRUE(Cues().marked->hot[5]);
  EXPECT_EQ(Cues().marked->hot[0]->place, std::chrono::seconds(10));
}

TEST_F(CuesTest, LoopsByBeatsAreMadeHalvedMovedKeptAndLeft) {
  Play(1);
  Seek(10s);
  const double beat = 60 / 120.5 * 44'100;
  Do(&DeckCues::Loop);
  ASSERT_TRUE(Told());
  EXPECT_NEAR(static_cast<double>(Told()->Frames()), 4 * beat, 2);
  const auto begin = Told()->begin.value;
  Do(&DeckCues::Resize, -1);
  EXPECT_NEAR(static_cast<double>(Told()->Frames()), 2 * beat, 2);
  Do(&DeckCues::MoveLoop, 1);
  EXPECT_NEAR(static_cast<double>(Told()->begin.value - begin), 2 * beat, 2);
  Do(&DeckCues::SaveLoop, 7);
  EXPECT_NEAR(std::chrono::duration<double>(Cues().marked->hot[7]->length).count() * 44'100, 2 * beat, 2);
  const auto kept = *Told();
  Do(&DeckCues::Loop);
  EXPECT_FALSE(Told());
  Do(&DeckCues::Hot, 7, true);
  EXPECT_EQ(Told(), kept) << "a kept loop plays again";
  Do(&DeckCues::Loop);
  Do(&DeckCues::Reloop);
  EXPECT_EQ(Told(), kept);
  Do(&DeckCues::Jump, -1);
  EXPECT_NEAR(static_cast<double>(loops_.jumps.back()), -4 * beat, 2);
}

TEST_F(CuesTest, ALoopByHandNeedsNoBeatsAndABadOneIsRefused) {
  Play(1);
  Seek(10s);
  Do(&DeckCues::LoopOut);
  EXPECT_FALSE(Told());
  Do(&DeckCues::LoopIn);
  Do(&DeckCues::LoopOut);
  EXPECT_FALSE(Told());
  EXPECT_EQ(Said(), "That loop does not fit into the track, or is shorter than can be played.");
  Seek(12s);
  Do(&DeckCues::LoopOut);
  ASSERT_TRUE(Told());
  EXPECT_NEAR(static_cast<double>(Told()->Frames()), 2 * 44'100, 100);
}

TEST_F(CuesTest, WithSlipAHeldCueLeadsBackToWhereTheTrackWouldBe) {
  Play(1);
  Seek(10s);
  Do(&DeckCues::Hot, 0, true);
  Do(&DeckCues::Slip, true);
  Do(&DeckCues::Hot, 0, true);
  EXPECT_EQ(loops_.slipped_back, 0);
  Do(&DeckCues::Hot, 0, false);
  EXPECT_EQ(loops_.slipped_back, 1);
  EXPECT_EQ(Stands(), State::Playing);
}

}  // namespace
}  // namespace app::testing
