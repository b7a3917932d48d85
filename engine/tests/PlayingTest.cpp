// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>

#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

class Playing : public ::testing::Test {
 protected:
  void SetUp() override {
    stage.files.Add("ramp.mp3", RampFile(20 * kRate));
    stage.files.Add("tone.mp3", ToneFile(20 * kRate, 200));
    stage.files.Add("other tone.mp3", ToneFile(20 * kRate, 330));
  }
  decks::StreamHandle Play(const std::string& path) {
    const auto stream = stage.Load(path);
    stage.engine->BASS_ChannelPlay(stream, false);
    return stream;
  }
  /// What the main output's left speaker got.
  std::vector<float> Left() { return stage.Channel("main", 0); }
  void ExpectNoStep(double hertz) { EXPECT_LT(Roughness(Left()), 1.6F * ToneRoughness(hertz, 0.5) + 2e-4F); }

  SoundStage stage;
};

TEST_F(Playing, AFileAtTheDevicesRateComesOutBitForBit) {
  Play("ramp.mp3");
  stage.Advance(2s);
  const auto left = Left();
  const std::size_t start = FirstSound(left) - 1;  // the ramp begins with 0
  for (std::size_t i = 0; i < 2 * kRate - 4000; ++i) {
    ASSERT_EQ(left[start + i], static_cast<float>(i % 25'000) / 32768.0F) << i;
  }
}

TEST_F(Playing, ASeekLeavesNoStep) {
  const auto stream = Play("tone.mp3");
  stage.Advance(500ms);
  EXPECT_TRUE(stage.engine->BASS_ChannelSetPosition(stream, {4 * 300'005}));
  stage.Advance(500ms);
  ExpectNoStep(200);
  EXPECT_NEAR(static_cast<double>(stage.engine->BASS_ChannelGetPosition(stream).value) / 4,
              300'005 + 0.4 * kRate, 0.1 * kRate);
}

TEST_F(Playing, PausingAndResumingLeaveNoStepAndGoOnAtTheSamePlace) {
  const auto stream = Play("tone.mp3");
  stage.Advance(505ms);
  stage.engine->BASS_ChannelPause(stream);
  stage.Advance(300ms);
  const auto paused = stage.engine->BASS_ChannelGetPosition(stream);
  stage.Advance(300ms);
  EXPECT_EQ(stage.engine->BASS_ChannelGetPosition(stream), paused);
  EXPECT_EQ(Left().back(), 0);
  stage.engine->BASS_ChannelPlay(stream, false);
  stage.Advance(300ms);
  ExpectNoStep(200);
  EXPECT_GT(stage.engine->BASS_ChannelGetPosition(stream), paused);
}

TEST_F(Playing, ResumingBeginsWithTheFrameAfterTheLastOneHeard) {
  const auto stream = Play("ramp.mp3");
  stage.Advance(300ms);
  stage.engine->BASS_ChannelPause(stream);
  stage.Advance(300ms);
  const auto paused = stage.engine->BASS_ChannelGetPosition(stream).value / 4;
  std::size_t first = Left().size();
  stage.engine->BASS_ChannelPlay(stream, false);
  stage.Advance(300ms);
  const auto left = Left();
  while (left.at(first) == 0) ++first;
  constexpr int kBehindTheFade = 400;
  EXPECT_EQ(left.at(first + kBehindTheFade) * 32768, static_cast<float>(paused + kBehindTheFade));
}

TEST_F(Playing, ChangingFromBypassToStretchedAndBackLeavesNoStep) {
  const auto stream = Play("tone.mp3");
  for (const float percent : {0.0F, 4.0F, 0.0F, -3.0F, 0.0F}) {
    stage.engine->BASS_FX_TempoSet(stream, percent, decks::kTempoUnchanged, decks::kTempoUnchanged);
    stage.Advance(300ms);
  }
  ExpectNoStep(208);
  EXPECT_NEAR(static_cast<double>(stage.engine->BASS_ChannelGetPosition(stream).value) / 4 / kRate,
              1.5 - 0.06 + 0.04 * 0.3 - 0.03 * 0.3, 0.005);
}

TEST_F(Playing, ANewFileOnASoundingDeckLeavesNoStep) {
  const auto stream = Play("tone.mp3");
  stage.Advance(505ms);
  stage.engine->BASS_StreamFree(stream);
  Play("other tone.mp3");
  stage.Advance(500ms);
  ExpectNoStep(330);
}

TEST_F(Playing, StoppingLeavesNoStepAndGoesBackToTheStart) {
  const auto stream = Play("tone.mp3");
  stage.Advance(505ms);
  stage.engine->BASS_ChannelStop(stream);
  stage.Advance(300ms);
  ExpectNoStep(200);
  EXPECT_EQ(stage.engine->BASS_ChannelGetPosition(stream).value, 0);
  EXPECT_FALSE(stage.engine->BASS_ChannelIsActive(stream));
}

}  // namespace
}  // namespace engine::testing
