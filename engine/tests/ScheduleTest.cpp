// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

using Kind = decks::ScheduledCommand::Kind;

class Schedule : public ::testing::Test {
 protected:
  void SetUp() override {
    FakeFile level = ToneFile(20 * kRate, 0);
    level.sample = [](std::int64_t, int) { return std::int16_t{16384}; };
    stage.files.Add("level.mp3", level);
    stage.files.Add("ramp.mp3", RampFile(20 * kRate));
    stage.outputs.SetBlocks({882, 137, 500});
  }
  /// The output's sample of an engine frame.
  float At(std::int64_t engine_frame) {
    const auto look_ahead = RenderCore(kRate, {}, stage.time).LookAhead();
    return stage.Channel("main", 0).at(static_cast<std::size_t>(engine_frame + look_ahead));
  }
  bool Order(decks::StreamHandle stream, Kind kind, std::int64_t at, float value = 0,
             std::chrono::milliseconds duration = 5ms) {
    return stage.engine->Schedule({kind, stream, {at}, value, duration});
  }

  SoundStage stage;
};

TEST_F(Schedule, AStartIsExactToTheFrame) {
  const auto stream = stage.Load("level.mp3");
  stage.Advance(100ms);
  ASSERT_TRUE(Order(stream, Kind::Start, 9'999));
  stage.Advance(300ms);
  EXPECT_EQ(At(9'998), 0);
  EXPECT_EQ(At(9'999), 0.5F);
}

TEST_F(Schedule, TwoStreamsStartOnTheSameFrame) {
  const auto first = stage.Load("level.mp3");
  const auto second = stage.Load("level.mp3");
  stage.Advance(100ms);
  Order(first, Kind::Start, 9'001);
  Order(second, Kind::Start, 9'001);
  stage.Advance(300ms);
  EXPECT_EQ(At(9'000), 0);
  EXPECT_GT(At(9'001), 0.75F) << "both; the step itself is limited";
}

TEST_F(Schedule, ARampBeginsAndEndsOnItsFrames) {
  const auto stream = stage.Load("level.mp3");
  stage.engine->BASS_ChannelPlay(stream, false);
  stage.Advance(100ms);
  Order(stream, Kind::Ramp, 10'000, 50, 1000ms);
  stage.Advance(2s);
  EXPECT_EQ(At(9'999), 0.5F);
  EXPECT_LT(At(10'000), 0.5F);
  EXPECT_NEAR(At(10'000 + kRate / 2), 0.375, 1e-3);
  EXPECT_GT(At(10'000 + kRate - 2), 0.25F);
  EXPECT_EQ(At(10'000 + kRate), 0.25F);
}

TEST_F(Schedule, AVolumeThatIsSetEndsTheRampsBeforeIt) {
  const auto stream = stage.Load("level.mp3");
  stage.engine->BASS_ChannelPlay(stream, false);
  stage.Advance(100ms);
  Order(stream, Kind::Ramp, 0, 0, 100ms);
  stage.engine->BASS_ChannelSetAttributes(stream, -1, 100, -101);  // both come in one block
  stage.Advance(500ms);
  EXPECT_EQ(stage.Last("main", 0), 0.5F);
  Order(stream, Kind::Ramp, 0, 0, 100ms);
  stage.Advance(500ms);
  EXPECT_EQ(stage.Last("main", 0), 0) << "one that comes after it counts";
}

TEST_F(Schedule, AStartWithARampFromSilenceSwellsIn) {
  const auto stream = stage.Load("level.mp3");
  stage.engine->BASS_ChannelSetAttributes(stream, -1, 0, -101);
  stage.Advance(100ms);
  Order(stream, Kind::Start, 10'000);
  Order(stream, Kind::Ramp, 10'000, 100, 500ms);
  stage.Advance(1s);
  EXPECT_LT(At(10'010), 0.01F);
  EXPECT_NEAR(At(10'000 + kRate / 4), 0.25, 1e-3);
}

TEST_F(Schedule, APauseBeginsItsFadeOnItsFrame) {
  const auto stream = stage.Load("level.mp3");
  stage.engine->BASS_ChannelPlay(stream, false);
  stage.Advance(100ms);
  Order(stream, Kind::Pause, 10'000);
  stage.Advance(500ms);
  EXPECT_EQ(At(9'999), 0.5F);
  EXPECT_LT(At(10'000), 0.5F);
  EXPECT_EQ(At(10'000 + kRate * 5 / 1000), 0);
}

TEST_F(Schedule, AFrameInThePastMeansTheNextBlock) {
  const auto stream = stage.Load("level.mp3");
  stage.Advance(500ms);
  const auto next = stage.engine->NextFrame(stream).value;
  Order(stream, Kind::Start, 5);
  stage.Advance(100ms);
  EXPECT_EQ(At(next - 1), 0);
  EXPECT_EQ(At(next), 0.5F);
}

TEST_F(Schedule, CommandsRunInTheOrderOfTheirFrames) {
  const auto stream = stage.Load("level.mp3");
  stage.Advance(100ms);
  Order(stream, Kind::Pause, 12'000);
  Order(stream, Kind::Start, 10'000);
  stage.Advance(500ms);
  EXPECT_EQ(At(9'999), 0);
  EXPECT_EQ(At(11'000), 0.5F);
  EXPECT_EQ(At(13'000), 0);
}

/// The ramp's slope tells the ratio under which a frame was made.
TEST_F(Schedule, ATempoChangesOnItsFrameWhateverTheRingHolds) {
  for (const int milliseconds : {30, 400}) {
    const auto stream = stage.Load("ramp.mp3");
    stage.engine->BASS_ChannelPlay(stream, false);
    stage.Advance(300ms);
    const std::int64_t at = stage.engine->NextFrame(stream).value + milliseconds * kRate / 1000;
    Order(stream, Kind::Tempo, at, 50);
    stage.Advance(600ms);
    const auto slope = [&](std::int64_t frame) { return (At(frame + 20) - At(frame)) * 32768 / 20; };
    EXPECT_NEAR(slope(at - 30), 1, 0.01) << milliseconds;
    EXPECT_NEAR(slope(at + 400), 1.5, 0.01) << milliseconds;
    // Without a jump in between, so that the place is right too.
    const float grown = (At(at + 400) - At(at - 30)) * 32768;
    EXPECT_NEAR(grown, 30 + 1.5 * 400, 2.5) << milliseconds;
    stage.engine->BASS_StreamFree(stream);
    stage.Advance(100ms);
  }
}

TEST_F(Schedule, AStreamFullOfFarCommandsSaysSoAndKeepsNoOtherWaiting) {
  const auto full = stage.Load("level.mp3");
  const auto other = stage.Load("level.mp3");
  int taken = 0;
  while (taken < 1000 && Order(full, Kind::Ramp, 1'000'000)) ++taken;
  EXPECT_EQ(taken, Stream::kScheduled);
  stage.Advance(100ms);
  EXPECT_FALSE(Order(full, Kind::Ramp, 1'000'000));
  EXPECT_TRUE(Order(other, Kind::Start, 0));
  stage.Advance(100ms);
  EXPECT_EQ(stage.Last("main", 0), 0.5F);
  EXPECT_FALSE(Order(full + 1000, Kind::Start, 0));
}

TEST_F(Schedule, WhatIsCancelledDoesNotHappenAndMakesRoom) {
  const auto stream = stage.Load("level.mp3");
  for (int i = 0; i < Stream::kScheduled; ++i) EXPECT_TRUE(Order(stream, Kind::Start, 20'000));
  stage.engine->CancelScheduled(stream);
  EXPECT_FALSE(Order(stream, Kind::Pause, 20'000)) << "the callback has not let go of them yet";
  stage.Advance(20ms);
  EXPECT_TRUE(Order(stream, Kind::Ramp, 40'000));
  stage.Advance(1s);
  EXPECT_FALSE(stage.engine->Heard(stream).playing);
}

TEST_F(Schedule, CommandsOfFreedStreamsGoWithThem) {
  for (int i = 0; i < 100; ++i) {
    const auto stream = stage.Load("level.mp3");
    for (int k = 0; k < Stream::kScheduled; ++k) ASSERT_TRUE(Order(stream, Kind::Start, 100'000'000)) << i;
    stage.engine->BASS_StreamFree(stream);
    stage.Advance(30ms);
  }
}

}  // namespace
}  // namespace engine::testing
