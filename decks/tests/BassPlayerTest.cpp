// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

#include "decks/LevelMeter.h"
#include "decks/clsBassPlayer.h"
#include "decks/testing/RecordingEngine.h"
#include "support/testing/FakeClock.h"

namespace decks {
namespace {

/// A deck that has a stereo file of 10 s at 44100 Hz on device 1, head-phones on device 2.
class BassPlayerTest : public ::testing::Test {
 protected:
  BassPlayerTest() {
    engine_.AddFile("a.mp3", {.seconds = 10});
    for (const char* name : {"Main", "Phones"}) engine_.AddDevice(name);
    for (const int device : {1, 2}) engine_.BASS_Init(device, 44100, 0);
    deck_.device(1);
    deck_.PreDevice(2);
    deck_.Filename("a.mp3");
  }

  support::testing::FakeClock clock_;
  testing::RecordingEngine engine_{clock_};
  MasterControls controls_;
  clsBassPlayer deck_{engine_, controls_};
};

constexpr std::int64_t kSecond = 44100 * 4;

TEST_F(BassPlayerTest, AnOpenedDeckIsStopped) {
  deck_.OpenFile();
  EXPECT_FALSE(deck_.IsPlaying() || deck_.IsPaused());
  EXPECT_EQ(deck_.StreamLength().value, 10 * kSecond);
}

TEST_F(BassPlayerTest, PausingIsAStateOfAPlayingDeck) {
  deck_.OpenFile();
  deck_.Play();
  deck_.PausePlay();
  EXPECT_TRUE(deck_.IsPlaying() && deck_.IsPaused());
  deck_.ResumePlay();
  EXPECT_TRUE(deck_.IsPlaying() && !deck_.IsPaused());
}

TEST_F(BassPlayerTest, StoppingEmptiesTheDeck) {
  deck_.OpenFile();
  deck_.Play();
  deck_.StopPlay();
  EXPECT_FALSE(deck_.IsPlaying() || deck_.IsPaused());
  EXPECT_EQ(deck_.STRM() + deck_.PreSTRM(), 0U);
}

TEST_F(BassPlayerTest, OpeningAnotherFileEndsThePlaying) {
  deck_.OpenFile();
  deck_.Play();
  deck_.OpenFile();
  EXPECT_FALSE(deck_.IsPlaying());
  EXPECT_EQ(engine_.Streams(), 2);
}

TEST_F(BassPlayerTest, ThePrelistenStreamStartsSilentAtTheMainOnesPlace) {
  deck_.OpenFile();
  deck_.PreVolume(80);
  deck_.StreamTime({3 * kSecond});
  deck_.Play();
  EXPECT_EQ(deck_.PreVolume(), 0);
  EXPECT_EQ(engine_.VolumeOf(deck_.PreSTRM()), 0);
  EXPECT_EQ(engine_.BASS_ChannelGetPosition(deck_.PreSTRM()).value, 3 * kSecond);
  EXPECT_EQ(engine_.DeviceOf(deck_.PreSTRM()), 2);
}

TEST_F(BassPlayerTest, ThePrelistenStreamFollowsWhicheverMainStreamThereIs) {
  deck_.OpenFile();
  EXPECT_EQ(engine_.LeaderOf(deck_.PreSTRM()), deck_.STRM());
  deck_.Play();
  EXPECT_EQ(engine_.LeaderOf(deck_.PreSTRM()), deck_.STRM()) << "built anew";
  deck_.OpenMain();
  EXPECT_EQ(engine_.LeaderOf(deck_.PreSTRM()), deck_.STRM()) << "on another output";
  deck_.ClosePrelisten();
  deck_.OpenPrelisten();
  EXPECT_EQ(engine_.LeaderOf(deck_.PreSTRM()), deck_.STRM()) << "opened late";
  EXPECT_EQ(engine_.LeaderOf(deck_.STRM()), 0U);
}

TEST_F(BassPlayerTest, AStoppedDeckIsHeardInTheHeadPhonesAlone) {
  deck_.OpenFile();
  deck_.StreamTime({3 * kSecond});
  deck_.PlayPrelisten();
  deck_.PreVolume(80);
  EXPECT_TRUE(engine_.Heard(deck_.PreSTRM()).playing);
  EXPECT_FALSE(engine_.Heard(deck_.STRM()).playing || deck_.IsPlaying());
  EXPECT_EQ(engine_.BASS_ChannelGetPosition(deck_.PreSTRM()).value, 3 * kSecond);
  deck_.PausePrelisten();
  EXPECT_FALSE(engine_.Heard(deck_.PreSTRM()).playing);
}

TEST_F(BassPlayerTest, StreamTimeIsWhatIsHeard) {
  deck_.OpenFile();
  deck_.Play();
  clock_.Advance(std::chrono::seconds(2));
  EXPECT_EQ(deck_.StreamTime().value, 2 * kSecond);
}

TEST_F(BassPlayerTest, AFileThatIsNotThereLeavesTheHandlesZeroAndLaterCallsHarmless) {
  deck_.Filename("none.mp3");
  deck_.OpenFile();
  deck_.Play();
  deck_.PausePlay();
  deck_.StreamTime({100});
  EXPECT_EQ(deck_.STRM() + deck_.PreSTRM(), 0U);
  EXPECT_EQ(deck_.StreamTime().value, 0);
  EXPECT_EQ(deck_.LeftdB(), 0);
}

TEST_F(BassPlayerTest, WhicheverCallOfOpenFileFailsTheDeckCanOpenAgain) {
  deck_.OpenFile();
  const int before = engine_.Calls();
  deck_.OpenFile();
  const int calls = engine_.Calls() - before;
  for (int failing = 1; failing <= calls; ++failing) {
    engine_.FailCall(failing);
    deck_.OpenFile();
    deck_.Play();
    deck_.StopPlay();
    deck_.OpenFile();
    EXPECT_NE(deck_.STRM(), 0U) << "after call " << failing << " failed";
    EXPECT_NE(deck_.PreSTRM(), 0U) << "after call " << failing << " failed";
  }
}

TEST_F(BassPlayerTest, HeadPhonesThatAreNotOpenAreNeverHeardOnTheMainOutput) {
  deck_.PreDevice(9);
  deck_.OpenFile();
  EXPECT_EQ(deck_.PreSTRM(), 0U);
  deck_.Play();
  EXPECT_EQ(engine_.Streams(), 1);
}

TEST_F(BassPlayerTest, ADeckThatIsGoneLeavesNoStream) {
  {
    clsBassPlayer deck(engine_, controls_);
    deck.Filename("a.mp3");
    deck.OpenFile();
  }
  EXPECT_EQ(engine_.Streams(), 0);
}

TEST_F(BassPlayerTest, LevelsOfLeftAndRightAndTheLouderOfBoth) {
  deck_.OpenFile();
  deck_.Play();
  engine_.SetPeaks(deck_.STRM(), 32768, 16384);
  EXPECT_FLOAT_EQ(deck_.LeftdB(), 0);
  EXPECT_NEAR(deck_.RightdB(), -6.0206, 0.0001);
  engine_.SetPeaks(deck_.STRM(), 3277, 16384);
  EXPECT_NEAR(deck_.dB(), -6.0206, 0.0001);
}

TEST_F(BassPlayerTest, ASilentChannelKeepsItsLastReading) {
  deck_.OpenFile();
  deck_.Play();
  engine_.SetPeaks(deck_.STRM(), 16384, 8192);
  const float left = deck_.LeftdB();
  engine_.SetPeaks(deck_.STRM(), 0, 8192);
  EXPECT_EQ(deck_.LeftdB(), left);
}

TEST(LevelMeterTest, TheMasterSliderDividesTheReading) {
  const std::tuple<std::uint32_t, int, double> readings[] = {{32768, 0, 0},         {32768, 99, 0},
                                                             {16384, 50, -12.0412}, {16384, 99, -602.06},
                                                             {1, 0, -90.309},       {3277, 75, -79.998}};
  for (const auto& [peak, slider, reading] : readings) {
    EXPECT_NEAR(LevelMeter().Read(peak, slider), reading, 0.001) << peak << " at " << slider;
  }
}

}  // namespace
}  // namespace decks
