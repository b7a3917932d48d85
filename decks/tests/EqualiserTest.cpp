// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/Equaliser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "decks/testing/RecordingEngine.h"
#include "support/testing/FakeClock.h"

namespace decks {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

/// Four decks with a file each, set up and silent.
class EqualiserTest : public ::testing::Test {
 protected:
  EqualiserTest() {
    engine_.AcceptAnyFile();
    engine_.BASS_Init(0, 44100, 0);
    for (clsBassPlayer& deck : decks_) {
      deck.device(0);
      deck.Filename("a.mp3");
      deck.OpenFile();
      equaliser_.SetUp(deck.STRM());
    }
    engine_.ClearLog();
  }
  void Move(int slider, int decibels) {
    equaliser_.Eq(slider, decibels);
    const std::array<const clsBassPlayer*, 4> all{&decks_[0], &decks_[1], &decks_[2], &decks_[3]};
    equaliser_.SliderChanged(slider, all);
  }
  std::vector<float> Gains(int deck) {
    return engine_.GainsOf(decks_[static_cast<std::size_t>(deck)].STRM());
  }

  support::testing::FakeClock clock_;
  testing::RecordingEngine engine_{clock_};
  MasterControls controls_;
  std::array<clsBassPlayer, 4> decks_{clsBassPlayer(engine_, controls_), clsBassPlayer(engine_, controls_),
                                      clsBassPlayer(engine_, controls_), clsBassPlayer(engine_, controls_)};
  Equaliser equaliser_{engine_};
};

TEST_F(EqualiserTest, SetUpAsksForTheRateThenMakesTenBandsThenSetsThem) {
  engine_.AddFile("b.mp3", {.sample_rate = 48000});
  decks_[0].Filename("b.mp3");
  decks_[0].OpenFile();
  engine_.ClearLog();
  const auto stream = std::to_string(decks_[0].STRM());
  equaliser_.SetUp(decks_[0].STRM());
  std::vector<std::string> expected{"BASS_ChannelGetAttributes " + stream};
  for (int i = 0; i < 10; ++i) expected.push_back("BASS_FX_DSP_Set " + stream + " 5 0");
  int band = 0;
  for (const char* centre : {"80", "170", "310", "600", "1000", "3000", "6000", "12000", "14000", "16000"}) {
    expected.push_back("BASS_FX_DSP_SetParameters " + stream + " 5 " + std::to_string(band++) +
                       " 48000 2.5 0 " + centre + " 0");
  }
  EXPECT_EQ(engine_.Log(), expected);
}

TEST_F(EqualiserTest, ASliderReadsItsBandAndWritesItBackWithTheNewGain) {
  decks_[1].IsPlaying(true);
  Move(4, -7);
  const auto stream = std::to_string(decks_[1].STRM());
  EXPECT_THAT(engine_.Log(), ElementsAre("BASS_FX_DSP_GetParameters " + stream + " 5 3",
                                         "BASS_FX_DSP_SetParameters " + stream + " 5 3 44100 2.5 0 600 -7"));
}

TEST_F(EqualiserTest, SliderOneMovesTheLowestBandAndSliderTenTheHighest) {
  decks_[0].IsPlaying(true);
  Move(1, 5);
  Move(10, -5);
  EXPECT_THAT(Gains(0), ElementsAre(5, 0, 0, 0, 0, 0, 0, 0, 0, -5));
}

TEST_F(EqualiserTest, SlidersBesideTheBandsAskForBandsThatNoStreamHas) {
  decks_[0].IsPlaying(true);
  for (const int slider : {0, 11, 19}) {
    engine_.ClearLog();
    Move(slider, 9);
    EXPECT_THAT(engine_.Log().front(), ::testing::EndsWith(" 5 " + std::to_string(slider - 1)));
  }
  EXPECT_THAT(Gains(0), Each(0));
  engine_.ClearLog();
  for (const int none : {-1, 20}) Move(none, 9);
  EXPECT_THAT(engine_.Log(), ElementsAre());
}

TEST_F(EqualiserTest, EveryPlayingDeckFollowsAndTheOthersStay) {
  decks_[0].IsPlaying(true);
  decks_[3].IsPlaying(true);
  Move(2, 6);
  EXPECT_EQ(Gains(0)[1], 6);
  EXPECT_EQ(Gains(3)[1], 6);
  EXPECT_EQ(Gains(1)[1], 0);
}

TEST_F(EqualiserTest, AValueMovedInSilenceActsOnlyWhenItIsMovedAgain) {
  Move(2, 6);
  EXPECT_THAT(engine_.Log(), ElementsAre());
  EXPECT_EQ(equaliser_.Eq(2), 6);
  decks_[0].IsPlaying(true);
  EXPECT_EQ(Gains(0)[1], 0);
  Move(2, 6);
  EXPECT_EQ(Gains(0)[1], 6);
}

TEST_F(EqualiserTest, AStreamThatTakesAnothersPlaceCanSoundLikeIt) {
  decks_[0].IsPlaying(true);
  Move(3, 4);
  const auto gains = equaliser_.GainsOf(decks_[0].STRM());
  equaliser_.SetGains(decks_[1].STRM(), gains);
  EXPECT_EQ(Gains(1), Gains(0));
  EXPECT_EQ(Gains(1)[2], 4);
}

}  // namespace
}  // namespace decks
