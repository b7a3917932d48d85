// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

#include "engine/testing/SoundStage.h"
#include "support/testing/RealtimeGuard.h"

namespace engine::testing {
namespace {

class Starvation : public ::testing::Test {
 protected:
  void SetUp() override {
    stage.files.Add("tone.mp3", ToneFile(20 * kRate, 200));
    stage.files.Add("ramp.mp3", RampFile(20 * kRate));
  }
  decks::StreamHandle Play(const std::string& path) {
    const auto stream = stage.Load(path);
    stage.engine->BASS_ChannelPlay(stream, false);
    return stream;
  }

  SoundStage stage;
};

TEST_F(Starvation, ARingThatRunsDryFadesAndComesBackWithoutAStep) {
  Play("tone.mp3");
  stage.Advance(500ms);
  stage.StopFeeding();
  stage.Advance(500ms);
  EXPECT_EQ(stage.Last("main", 0), 0);
  stage.GoOnFeeding();
  stage.Advance(500ms);
  EXPECT_LT(Roughness(stage.Channel("main", 0)), 1.6F * ToneRoughness(200, 0.5) + 2e-4F);
  EXPECT_EQ(stage.engine->Health().late_blocks, 1U);
}

TEST_F(Starvation, NoMoreThanSixtyMillisecondsLieInTheRing) {
  Play("tone.mp3");
  stage.Advance(500ms);
  const std::size_t stopped = stage.Channel("main", 0).size();
  stage.StopFeeding();
  stage.Advance(500ms);
  std::vector<float> left = stage.Channel("main", 0);
  while (left.back() == 0) left.pop_back();
  const std::size_t block_and_limiter = 882 + 78;
  EXPECT_GT(left.size(), stopped + kRate * 40 / 1000);
  EXPECT_LE(left.size(), stopped + kRate * 60 / 1000 + block_and_limiter);
}

TEST_F(Starvation, WhatIsHeardAfterwardsIsWhereThePlaceSays) {
  const auto stream = Play("ramp.mp3");
  stage.Advance(500ms);
  stage.StopFeeding();
  stage.Advance(200ms);
  const auto stopped = stage.engine->Heard(stream).frame.value;
  stage.GoOnFeeding();
  stage.Advance(200ms);
  EXPECT_GT(stage.engine->Heard(stream).frame.value, stopped);
  EXPECT_LT(stage.engine->Heard(stream).frame.value, stopped + kRate / 5);
  EXPECT_EQ(static_cast<float>(stage.engine->Heard(stream).frame.value % 25'000),
            stage.AtLoudspeaker("main") * 32768);
}

TEST_F(Starvation, ASlowDiskDelaysTheStartAndIsNotCounted) {
  stage.StopWorkers();
  const auto stream = stage.Load("tone.mp3");
  stage.engine->BASS_ChannelSetPosition(stream, {4 * 10 * kRate});
  stage.engine->BASS_ChannelPlay(stream, false);
  stage.Advance(300ms);
  EXPECT_EQ(stage.Last("main", 0), 0);
  EXPECT_TRUE(stage.engine->Heard(stream).playing);
  stage.workers.RunAll();
  stage.Advance(300ms);
  EXPECT_GT(stage.engine->Heard(stream).frame.value, 10 * kRate);
  EXPECT_EQ(stage.engine->Health().late_blocks, 0U);
}

TEST_F(Starvation, WhatTheSystemRanOutOfIsCountedPastTheOutputsEnd) {
  Play("tone.mp3");
  stage.outputs.RunDry("main");
  stage.outputs.RunDry("main");
  EXPECT_EQ(stage.engine->Health().late_blocks, 2U);
  stage.outputs.Remove("main");
  stage.Advance(100ms);
  stage.engine->TakeDeviceEvents();
  EXPECT_EQ(stage.engine->Health().late_blocks, 2U);
}

TEST_F(Starvation, AStreamNeverStartsFromThePlaceItWasMovedFrom) {
  const auto stream = stage.Load("tone.mp3");
  stage.Advance(100ms);
  stage.StopFeeding();
  stage.engine->BASS_ChannelSetPosition(stream, {4 * 200'000});
  stage.engine->BASS_ChannelPlay(stream, false);
  stage.Advance(100ms);
  EXPECT_EQ(FirstSound(stage.Channel("main", 0)), stage.Channel("main", 0).size());
  stage.GoOnFeeding();
  stage.Advance(200ms);
  EXPECT_GT(stage.engine->Heard(stream).frame.value, 200'000);
  EXPECT_EQ(stage.engine->Health().late_blocks, 0U);
}

TEST_F(Starvation, ASeekNearTheEndPlaysOnFromThere) {
  stage.files.Add("short.mp3", ToneFile(kRate, 200));
  const auto stream = Play("short.mp3");
  stage.Advance(995ms);
  stage.StopFeeding();
  stage.engine->BASS_ChannelSetPosition(stream, {4 * 10'000});
  stage.Advance(30ms);
  stage.GoOnFeeding();
  stage.Advance(300ms);
  EXPECT_TRUE(stage.engine->Heard(stream).playing);
  EXPECT_GT(stage.engine->Heard(stream).frame.value, 10'000);
}

TEST_F(Starvation, AFileThatBreaksInTheMiddleEndsThere) {
  FakeFile file = ToneFile(5 * kRate, 200);
  file.fails_at = 2 * kRate;
  stage.files.Add("broken.mp3", file);
  const auto stream = Play("broken.mp3");
  stage.Advance(2500ms);
  EXPECT_TRUE(stage.engine->Heard(stream).ended);
  EXPECT_TRUE(stage.engine->Heard(stream).cut_short);
  EXPECT_EQ(stage.engine->Heard(stream).frame.value, 2 * kRate);
  EXPECT_FALSE(stage.engine->Heard(stage.Load("tone.mp3")).cut_short);
}

/// Everything a hand can do, in any order: nothing but sound comes out, and the callback never takes memory.
class AnyCommands : public ::testing::TestWithParam<unsigned> {};

TEST_P(AnyCommands, LeaveNoStepAndNothingThatIsNoNumber) {
  static_cast<void>(
      support::testing::RealtimeGuardWorks());  // links the guard, which ends the program at a fault
  SoundStage stage;
  if (GetParam() % 2 == 0) stage.MakeBusy();
  stage.files.Add("one.mp3", ToneFile(20 * kRate, 150, 0.2));
  stage.files.Add("two.mp3", ToneFile(3 * kRate, 150, 0.2, 48000));
  stage.outputs.SetBlocks({882, 441, 100, 1, 700, 333});
  std::mt19937 random(GetParam());
  const auto upto = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  std::array<decks::StreamHandle, 3> streams{};
  for (auto& stream : streams) stream = stage.Load("one.mp3");
  for (int i = 0; i < 1000; ++i) {
    auto& stream = streams[static_cast<std::size_t>(upto(3))];
    const std::int64_t soon = stage.engine->NextFrame(stream).value + upto(5000);
    switch (upto(10)) {
      case 0:
        stage.engine->BASS_ChannelPause(stream);
        break;
      case 1:
        stage.engine->BASS_ChannelSetPosition(stream, {4 * static_cast<std::int64_t>(upto(18 * kRate))});
        break;
      case 2:
        stage.engine->BASS_ChannelSetAttributes(stream, -1, upto(101), upto(201) - 100);
        break;
      case 3:
        stage.engine->BASS_FX_TempoSet(stream, static_cast<float>(upto(5) * 4 - 8), 0, 0);
        break;
      case 4:
        stage.engine->Schedule({decks::ScheduledCommand::Kind::Start, stream, {soon}, 0, 5ms});
        break;
      case 5:
        stage.engine->Schedule({decks::ScheduledCommand::Kind::Ramp, stream, {soon}, 50, 50ms});
        break;
      case 6:
        stage.engine->Schedule({decks::ScheduledCommand::Kind::Tempo, stream, {soon}, 4, 5ms});
        break;
      case 7:
        stage.engine->BASS_StreamFree(stream);
        stream = stage.Load(upto(2) == 0 ? "one.mp3" : "two.mp3");
        break;
      default:
        stage.engine->BASS_ChannelPlay(stream, upto(4) == 0);
        break;
    }
    stage.Advance(std::chrono::milliseconds(upto(40)));
  }
  const auto left = stage.Channel("main", 0);
  EXPECT_GT(*std::max_element(left.begin(), left.end()), 0.1F);
  EXPECT_TRUE(
      std::all_of(left.begin(), left.end(), [](float s) { return std::isfinite(s) && std::abs(s) <= 1; }));
  // The steepest bend of all: the slope of three tones at 16 % more, set in or out at once by a tempo change.
  EXPECT_LT(Roughness(left), 0.008F);
  EXPECT_EQ(stage.engine->Health().late_blocks, 0U);
}

INSTANTIATE_TEST_SUITE_P(Seeds, AnyCommands, ::testing::Range(1U, 9U));

}  // namespace
}  // namespace engine::testing
