// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/WorkstationView.h"
#include "app/tests/Evening.h"

namespace app::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Each;

class EqualiserAndMixPoints : public Evening {
 protected:
  /// One second of silence, two of sound, one of silence.
  void AddTrack(const std::string& name) {
    std::vector<std::int16_t> samples(4 * 88'200);
    for (std::size_t i = 88'200; i < 3 * 88'200; ++i) samples[i] = i % 2 == 0 ? 300 : -300;
    engine_.AddFile(name, {.seconds = 4, .samples = samples});
  }
  void Scan() {
    workers_.RunAll();
    Settle();
  }
  /// Equaliser gains of the newest stream that has any.
  std::vector<float> Gains(int deck_stream) {
    return engine_.GainsOf(static_cast<decks::StreamHandle>(deck_stream));
  }
  int LastPlayed() {
    int stream = 0;
    for (const std::string& call : engine_.Log()) {
      if (call.rfind("BASS_ChannelPlay ", 0) == 0) stream = std::stoi(call.substr(17));
    }
    return stream;
  }
};

TEST_F(EqualiserAndMixPoints, AreFoundByAWorkerAndShown) {
  AddTrack("t.mp3");
  StartUp();
  Load(1, "t.mp3");
  EXPECT_FALSE(Deck(1).has_mix_points);
  Scan();
  ASSERT_TRUE(Deck(1).has_mix_points);
  EXPECT_NEAR(std::chrono::duration<double>(Deck(1).start_mix_point).count(), 1, 0.001);
  EXPECT_NEAR(std::chrono::duration<double>(Deck(1).end_mix_point).count(), 3, 0.001);
  EXPECT_EQ(Deck(1).scan_busy, 0);
}

TEST_F(EqualiserAndMixPoints, BelongToTheFileOnTheDeck) {
  AddTrack("t.mp3");
  StartUp();
  Load(1, "t.mp3");
  Load(1, "a.mp3");
  EXPECT_FALSE(Deck(1).has_mix_points);
  Scan();
  EXPECT_TRUE(Deck(1).has_mix_points);
  EXPECT_EQ(Deck(1).start_mix_point, 0us);
}

TEST_F(EqualiserAndMixPoints, AThresholdThatIsMovedFindsOthers) {
  AddTrack("t.mp3");
  Store("Settings", "GainPercent", "2");
  StartUp();
  Load(1, "t.mp3");
  Scan();
  EXPECT_NEAR(std::chrono::duration<double>(Deck(1).start_mix_point).count(), 1, 0.001);
  station_->Decks().SetGainPercent(50);
  Settle();
  Scan();
  EXPECT_EQ(Stored("Settings", "GainPercent"), "50");
  EXPECT_NEAR(std::chrono::duration<double>(Deck(1).start_mix_point).count(), 4, 0.001)
      << "nothing is so loud";
  EXPECT_EQ(Deck(1).end_mix_point, 0us);
}

TEST_F(EqualiserAndMixPoints, AStoppedDeckKeepsItsPointsWithoutAnotherScan) {
  AddTrack("t.mp3");
  StartUp();
  Load(1, "t.mp3");
  Scan();
  Play(1);
  station_->Decks()[1].Do(&DeckStation::Stop);
  Settle();
  EXPECT_TRUE(Deck(1).has_mix_points);
}

TEST_F(EqualiserAndMixPoints, LeaveNoDecoderWhenTheEveningEndsInTheMiddle) {
  AddTrack("t.mp3");
  StartUp();
  Load(1, "t.mp3");
  station_.reset();
  workers_.RunAll();
  EXPECT_EQ(engine_.Streams(), 0);
}

TEST_F(EqualiserAndMixPoints, AnOpenedFileHasTenFlatBands) {
  StartUp();
  station_->Equaliser().Set(3, 6);
  Load(1, "a.mp3");
  Play(1);
  const auto gains = Gains(LastPlayed());
  EXPECT_EQ(gains.size(), 10U);
  EXPECT_THAT(gains, Each(0));
}

TEST_F(EqualiserAndMixPoints, ASliderMovesItsBandWhileTheDeckPlaysAndIsStored) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  station_->Equaliser().Set(3, 6);
  station_->Equaliser().Set(13, -99);
  station_->Equaliser().Set(20, 5);
  Settle();
  EXPECT_EQ(Gains(LastPlayed())[2], 6);
  EXPECT_EQ(station_->View().equaliser[3], 6);
  EXPECT_EQ(station_->View().equaliser[13], -12);
  EXPECT_EQ(Stored("Eq1", "3"), "6");
  EXPECT_EQ(Stored("Eq2", "3"), "-12");
}

TEST_F(EqualiserAndMixPoints, StoredSlidersAreShownAndSoundOnlyWhenMoved) {
  Store("Eq1", "4", "7");
  Store("Eq2", "0", "-5");
  Store("Eq2", "1", "500");
  StartUp();
  EXPECT_EQ(station_->View().equaliser[4], 7);
  EXPECT_EQ(station_->View().equaliser[10], -5);
  EXPECT_EQ(station_->View().equaliser[11], 12);
  Load(1, "a.mp3");
  Play(1);
  EXPECT_THAT(Gains(LastPlayed()), Each(0));
}

TEST_F(EqualiserAndMixPoints, ADeckThatMovesToAnotherOutputKeepsItsSound) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  station_->Equaliser().Set(5, 4);
  Settle();
  const int before = LastPlayed();
  station_->Outputs().Set(1, {2, 0});
  Settle();
  Scan();
  ASSERT_NE(LastPlayed(), before);
  EXPECT_EQ(Gains(LastPlayed())[4], 4);
}

}  // namespace
}  // namespace app::testing
