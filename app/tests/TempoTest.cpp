// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "app/WorkstationView.h"
#include "app/tests/Evening.h"

namespace app::testing {
namespace {

using namespace std::chrono_literals;
using decks::KeyLock;

class TempoTools : public Evening {
 protected:
  void Ready(int deck = 1) {
    StartUp();
    Load(deck, "a.mp3");
    Play(deck);
  }
  /// The stream that was played last.
  decks::StreamHandle Stream() {
    int stream = 0;
    for (const std::string& call : engine_.Log()) {
      if (call.rfind("BASS_ChannelPlay ", 0) == 0) stream = std::stoi(call.substr(17));
    }
    return static_cast<decks::StreamHandle>(stream);
  }
  void Tap(std::chrono::milliseconds every, int times) {
    for (int i = 0; i < times; ++i) {
      station_->Decks()[1].Tap();
      Advance(every);
    }
  }
};

TEST_F(TempoTools, WithoutKeyLockTheRateMovesInsteadOfTheTempo) {
  Ready();
  station_->Decks()[1].SetTempo(4);
  Settle();
  EXPECT_FLOAT_EQ(engine_.TempoOf(Stream()), 4);
  EXPECT_EQ(engine_.RateOf(Stream()), 0);
  station_->Decks()[1].SetKeyLock(KeyLock::Off);
  Settle();
  EXPECT_EQ(engine_.TempoOf(Stream()), 0);
  EXPECT_FLOAT_EQ(engine_.RateOf(Stream()), 44100 * 1.04F);
  EXPECT_EQ(Deck(1).key_lock, KeyLock::Off);
  EXPECT_NEAR(Deck(1).playing_bpm, 120.5 * 1.04, 1e-3);
}

TEST_F(TempoTools, SampleRateAndPitchComeOnTop) {
  Ready();
  station_->Decks()[1].SetTempo(10);
  station_->Decks()[1].SetSampleRate(-10);
  station_->Decks()[1].SetPitch(2);
  Settle();
  EXPECT_FLOAT_EQ(engine_.TempoOf(Stream()), 10);
  EXPECT_FLOAT_EQ(engine_.RateOf(Stream()), 39690);
  EXPECT_FLOAT_EQ(engine_.SemitonesOf(Stream()), 2);
  EXPECT_NEAR(Deck(1).playing_bpm, 120.5 * 0.99, 1e-3);
}

TEST_F(TempoTools, WhatIsNoTempoBecomesTheOriginal) {
  Ready();
  for (const float wrong :
       {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
    station_->Decks()[1].SetTempo(4);
    station_->Decks()[1].SetTempo(wrong);
    station_->Decks()[1].SetPitch(wrong);
    station_->Decks()[1].SetSampleRate(wrong);
    station_->Decks()[1].Nudge(wrong);
    Settle();
    EXPECT_EQ(engine_.TempoOf(Stream()), 0);
    EXPECT_EQ(Deck(1).tempo_percent, 0);
    EXPECT_EQ(Stored("Player1", "PitchTempo"), "0.000");
  }
}

TEST_F(TempoTools, AreStoredAndComeBackWithTheNextFile) {
  for (const auto& [key, value] :
       {std::pair{"PitchTempo", "3.5"}, {"PitchSample", "-2"}, {"PitchScaling", "1"}})
    Store("Player2", key, value);
  Store("Player2", "KeyLock", "False");
  Store("Player2", "TempoRange", "16");
  Ready(2);
  EXPECT_FLOAT_EQ(engine_.RateOf(Stream()), 44100 * 0.98F * 1.035F);
  EXPECT_FLOAT_EQ(engine_.SemitonesOf(Stream()), 1);
  EXPECT_EQ(Deck(2).tempo_range, 16);
  station_->Decks()[2].SetTempo(-1.25F);
  station_->Decks()[2].SetTempoRange(50);
  station_->Decks()[2].SetTempoRange(7);
  station_->Decks()[2].SetKeyLock(KeyLock::On);
  EXPECT_EQ(Stored("Player2", "PitchTempo"), "-1.250");
  EXPECT_EQ(Stored("Player2", "TempoRange"), "50");
  EXPECT_EQ(Stored("Player2", "KeyLock"), "True");
}

TEST_F(TempoTools, MoveTheHeadphonesWithTheDeck) {
  Store("Devices", "Device3", "2");
  Ready();
  station_->Decks()[1].SetTempo(4);
  Settle();
  const decks::StreamHandle prelisten = Stream();  // it is played after the main stream
  EXPECT_EQ(engine_.DeviceOf(prelisten), 2);
  EXPECT_FLOAT_EQ(engine_.TempoOf(prelisten), 4);
  station_->Decks()[1].Do(&DeckStation::Stop);
  Settle();
  Play(1);
  EXPECT_FLOAT_EQ(engine_.TempoOf(Stream()), 4) << "also those of the next start";
}

TEST_F(TempoTools, ANudgeLastsAsLongAsItIsHeld) {
  Ready();
  station_->Decks()[1].Nudge(-5);
  Settle();
  EXPECT_FLOAT_EQ(engine_.TempoOf(Stream()), -5);
  EXPECT_EQ(Deck(1).tempo_percent, 0) << "the slider stays";
  station_->Decks()[1].Nudge(0);
  Settle();
  EXPECT_EQ(engine_.TempoOf(Stream()), 0);
}

TEST_F(TempoTools, FourTapsGiveTheTempoOfTheFileAtItsOwnSpeed) {
  Ready();
  station_->Decks()[1].SetTempo(25);
  Tap(400ms, 3);
  EXPECT_NEAR(Deck(1).bpm, 120.5, 1e-6);
  Tap(400ms, 1);
  EXPECT_NEAR(Deck(1).bpm, 120, 0.01) << "150 are heard";
  ASSERT_NE(Deck(1).grid, nullptr);
  EXPECT_NEAR(Deck(1).grid->PhaseAt(music::Seconds(Deck(1).position) - 500ms), 0, 0.01)
      << "where it was tapped";
  Advance(3s);
  Tap(250ms, 3);
  EXPECT_NEAR(Deck(1).bpm, 120, 0.01) << "a pause begins anew";
}

TEST_F(TempoTools, AGridIsScaledShiftedAndAligned) {
  Ready();
  Advance(1010ms);
  station_->Decks()[1].Adjust(&DeckTempo::Align);
  Settle();
  ASSERT_NE(Deck(1).grid, nullptr) << "the row knows the tempo";
  const auto phase = [&](music::Seconds at) {
    const double part = Deck(1).grid->PhaseAt(at);
    return std::min(part, 1 - part);
  };
  EXPECT_NEAR(phase(1010ms), 0, 1e-3);
  station_->Decks()[1].Adjust(&DeckTempo::Shift, 20ms);
  station_->Decks()[1].Adjust(&DeckTempo::Scale, music::BeatScale::Half);
  Settle();
  EXPECT_NEAR(Deck(1).bpm, 60.25, 1e-6);
  station_->Decks()[1].Adjust(&DeckTempo::Scale, music::BeatScale::Double);
  Settle();
  EXPECT_NEAR(phase(1030ms), 0, 1e-3);
  Load(1, "b.mp3");
  EXPECT_EQ(Deck(1).grid, nullptr);
}

class SyncedDecks : public TempoTools {
 protected:
  /// Deck 1 with 120.5 plays 5 % faster; deck 2 has 120.5 too and beats somewhere else.
  void TwoDecks(SyncStart start = SyncStart::Gently) {
    StartUp();
    for (const int deck : {1, 2}) {
      Load(deck, deck == 1 ? "a.mp3" : "b.mp3");
      Play(deck);
      station_->Decks()[deck].Adjust(&DeckTempo::Align);
      Advance(130ms);
    }
    station_->Decks()[1].SetTempo(5);
    station_->Decks()[2].Sync(start);
    Run(1);
  }
  void Run(int seconds) {
    for (int i = 0; i < seconds * 100; ++i) Advance(10ms);
  }
  [[nodiscard]] double Error() {
    const auto beat = [&](int deck) { return Deck(deck).grid->BeatAt(Deck(deck).position); };
    const double beats = beat(1) - beat(2);
    return (beats - std::round(beats)) * 60 / 126.5;
  }
};

TEST_F(SyncedDecks, BeatTogether) {
  TwoDecks();
  EXPECT_TRUE(Deck(2).synced);
  EXPECT_FALSE(Deck(1).synced);
  EXPECT_NEAR(Deck(2).tempo_percent, 5, 1e-3);
  EXPECT_GT(std::abs(Error()), 0.01) << "no jump";
  Run(10);
  EXPECT_LT(std::abs(Error()), 0.001);
  station_->Decks()[1].SetTempo(3);
  Run(2);
  EXPECT_NEAR(Deck(2).tempo_percent, 3, 1e-3) << "it follows the slider";
}

TEST_F(SyncedDecks, AtOnceIsACrossfadeIntoTheBeat) {
  TwoDecks(SyncStart::AtOnce);
  EXPECT_LT(std::abs(Error()), 0.02);
  Run(3);
  EXPECT_LT(std::abs(Error()), 0.001);
}

TEST_F(SyncedDecks, ANudgeMovesTheBeatsApartForGood) {
  TwoDecks();
  Run(10);
  station_->Decks()[2].Nudge(4);
  Run(1);
  station_->Decks()[2].Nudge(0);
  Run(5);
  EXPECT_NEAR(Error(), -0.04, 0.005);
}

TEST_F(SyncedDecks, PartWhenTheTempoIsSetByHandOrAnotherFileComes) {
  TwoDecks();
  station_->Decks()[2].SetTempo(1);
  Run(1);
  EXPECT_FALSE(Deck(2).synced);
  EXPECT_EQ(Deck(2).tempo_percent, 1);
  station_->Decks()[2].Sync();
  Run(1);
  ASSERT_TRUE(Deck(2).synced);
  Load(2, "c.flac");
  EXPECT_FALSE(Deck(2).synced);
}

TEST_F(SyncedDecks, NeverFollowEachOther) {
  TwoDecks();
  station_->Decks()[1].Sync();
  Run(1);
  EXPECT_TRUE(Deck(1).synced);
  EXPECT_FALSE(Deck(2).synced);
}

TEST_F(SyncedDecks, SayWhenTheTemposAreTooFarApart) {
  Store("Settings", "BPMPercent", "3");
  TwoDecks();
  EXPECT_FALSE(Deck(2).synced);
  EXPECT_EQ(station_->View().notice,
            "The tempos lie more than 3 percent apart; the deck plays on by itself.");
  EXPECT_EQ(Deck(2).tempo_percent, 0);
}

}  // namespace
}  // namespace app::testing
