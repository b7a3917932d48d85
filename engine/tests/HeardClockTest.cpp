// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>

#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

class HeardClock : public ::testing::Test {
 protected:
  void SetUp() override {
    stage.files.Add("ramp.mp3", RampFile(20 * kRate));
    stage.files.Add("half second.mp3", ToneFile(kRate / 2, 500));
    stage.files.Add("loud then silent.mp3", LoudThenSilent());
    stage.outputs.SetBlocks({882, 441, 100, 1, 700, 333});
  }
  static FakeFile LoudThenSilent() {
    FakeFile file = ToneFile(4 * kRate, 500);
    file.sample = [](std::int64_t frame, int channel) {
      return static_cast<std::int16_t>(frame < kRate ? (channel == 0 ? 16384 : -8192) : 0);
    };
    return file;
  }
  decks::StreamHandle Play(const std::string& path) {
    const auto stream = stage.Load(path);
    stage.engine->BASS_ChannelPlay(stream, false);
    return stream;
  }
  std::int64_t Frame(decks::StreamHandle stream) { return stage.engine->Heard(stream).frame.value; }
  /// The ramp's sample at the loudspeaker tells its frame modulo 25,000.
  void ExpectPlaceOfSample(decks::StreamHandle stream, double tolerance) {
    const double sample = stage.AtLoudspeaker("main") * 32768.0;
    EXPECT_NEAR(std::fmod(static_cast<double>(Frame(stream)), 25'000), sample, tolerance);
  }

  SoundStage stage;
};

TEST_F(HeardClock, ThePlaceIsThatOfTheSampleAtTheLoudspeaker) {
  const auto stream = Play("ramp.mp3");
  stage.Advance(200ms);
  for (int i = 0; i < 50; ++i, stage.Advance(7ms)) ExpectPlaceOfSample(stream, 0);
}

/// An output whose count of played frames is whatever the test says.
class CountingOutput final : public OutputDevice {
 public:
  explicit CountingOutput(PlayedMark& mark) : mark_(mark) {}
  [[nodiscard]] const OutputDeviceInfo& Info() const noexcept override { return info_; }
  [[nodiscard]] PlayedMark Played() const noexcept override { return mark_; }
  [[nodiscard]] bool Lost() const noexcept override { return false; }
  [[nodiscard]] std::uint64_t Gaps() const noexcept override { return 0; }

 private:
  PlayedMark& mark_;
  OutputDeviceInfo info_ = StereoOutput("any");
};

TEST_F(HeardClock, NeverPassesWhatWasGivenAndNeverGoesBack) {
  PlayedMark mark;
  DeviceSlot slot(1, StereoOutput("any"), {}, stage.time);
  auto owned = std::make_unique<OutputPlug>(StereoOutput("any"));
  OutputPlug& plug = *owned;
  plug.Insert(std::make_unique<CountingOutput>(mark));
  slot.Plug(std::move(owned));
  std::vector<float> block(2 * 1000);
  plug.Render(block);
  const int ahead = slot.Core().LookAhead();
  mark = {400, stage.time.Now()};
  EXPECT_EQ(slot.HeardFrame(), 400 - ahead);
  stage.time.MoveTo(stage.time.Now() + 1s);
  EXPECT_EQ(slot.HeardFrame(), 1000 - ahead) << "a mark that stays out is not gone past what was given";
  mark = {300, stage.time.Now()};
  EXPECT_EQ(slot.HeardFrame(), 1000 - ahead) << "a mark that jumps back is not followed";
}

TEST_F(HeardClock, APlaceThatIsNotDecodedYetIsWaitedForAndSaidToBe) {
  stage.files.Add("long.mp3", RampFile(600 * kRate));
  stage.engine->BASS_Init(1, kRate, 0);
  stage.engine->BASS_SetDevice(1);
  stage.StopWorkers();
  const auto stream = stage.Load("long.mp3");
  stage.engine->BASS_ChannelSetPosition(stream, {4LL * 500 * kRate});
  EXPECT_TRUE(stage.engine->Heard(stream).waiting);
  stage.workers.RunAll();
  EXPECT_FALSE(stage.engine->Heard(stream).waiting);
}

TEST_F(HeardClock, BeforeTheFirstBlockNothingIsHeard) {
  const auto stream = Play("ramp.mp3");
  EXPECT_EQ(Frame(stream), 0);
  EXPECT_EQ(stage.engine->BASS_ChannelGetLevel(stream), 0U);
}

TEST_F(HeardClock, ASeekIsSeenWhenItIsHeard) {
  const auto stream = Play("ramp.mp3");
  stage.Advance(200ms);
  stage.engine->BASS_ChannelSetPosition(stream, {4 * 400'000});
  EXPECT_LT(Frame(stream), kRate);
  stage.Advance(30ms);
  EXPECT_LT(Frame(stream), kRate);
  stage.Advance(70ms);
  EXPECT_GT(Frame(stream), 400'000);
  for (int i = 0; i < 20; ++i, stage.Advance(7ms)) ExpectPlaceOfSample(stream, 0);
}

TEST_F(HeardClock, APauseFreezesThePlaceAndResumingGoesOnThere) {
  const auto stream = Play("ramp.mp3");
  stage.Advance(500ms);
  stage.engine->BASS_ChannelPause(stream);
  stage.Advance(200ms);
  const std::int64_t frozen = Frame(stream);
  stage.Advance(2s);
  EXPECT_EQ(Frame(stream), frozen);
  stage.engine->BASS_ChannelPlay(stream, false);
  stage.Advance(200ms);
  EXPECT_NEAR(static_cast<double>(Frame(stream) - frozen), 0.13 * kRate, 0.03 * kRate);
  for (int i = 0; i < 20; ++i, stage.Advance(7ms)) ExpectPlaceOfSample(stream, 0);
}

TEST_F(HeardClock, ThePlaceHoldsWithKeyLockAtFourPercent) {
  const auto stream = Play("ramp.mp3");
  stage.engine->BASS_FX_TempoSet(stream, 4, decks::kTempoUnchanged, decks::kTempoUnchanged);
  stage.Advance(300ms);
  for (int i = 0; i < 100; ++i, stage.Advance(37ms)) ExpectPlaceOfSample(stream, 2.1);
  EXPECT_NEAR(stage.engine->Heard(stream).ratio, 1.04, 1e-9);
}

TEST_F(HeardClock, ThePlaceIsInTheFilesOwnFramesWhateverItsRate) {
  stage.files.Add("ramp 48k.mp3", RampFile(10 * 48000, 48000));
  const auto stream = Play("ramp 48k.mp3");
  stage.Advance(200ms);
  for (int i = 0; i < 50; ++i, stage.Advance(37ms)) ExpectPlaceOfSample(stream, 2.1);
  EXPECT_NEAR(stage.engine->Heard(stream).ratio, 1, 1e-9);
}

TEST_F(HeardClock, LevelsAreThoseOfTheLastTwentyMillisecondsHeard) {
  const auto stream = Play("loud then silent.mp3");
  stage.Advance(700ms);
  EXPECT_EQ(stage.engine->BASS_ChannelGetLevel(stream), 16384U | 8192U << 16);
  // The last loud frame is given to the output one second after the start, and heard 60 ms later.
  stage.Advance(340ms);
  EXPECT_EQ(stage.engine->BASS_ChannelGetLevel(stream), 16384U | 8192U << 16);
  stage.Advance(80ms);
  EXPECT_EQ(stage.engine->BASS_ChannelGetLevel(stream), 0U);
}

TEST_F(HeardClock, LevelsAreMeasuredBeforeVolume) {
  const auto stream = Play("loud then silent.mp3");
  stage.engine->BASS_ChannelSetAttributes(stream, -1, 10, -101);
  stage.Advance(700ms);
  EXPECT_EQ(stage.engine->BASS_ChannelGetLevel(stream), 16384U | 8192U << 16);
}

TEST_F(HeardClock, AFileHasEndedWhenItsLastFrameWasHeard) {
  const auto stream = Play("half second.mp3");
  stage.Advance(540ms);
  EXPECT_FALSE(stage.engine->Heard(stream).ended);
  EXPECT_TRUE(stage.engine->BASS_ChannelIsActive(stream));
  stage.Advance(60ms);
  EXPECT_TRUE(stage.engine->Heard(stream).ended);
  EXPECT_FALSE(stage.engine->Heard(stream).playing);
  EXPECT_FALSE(stage.engine->BASS_ChannelIsActive(stream));
  EXPECT_EQ(Frame(stream), kRate / 2);
}

TEST_F(HeardClock, PlayingAfterTheEndBeginsAgain) {
  const auto stream = Play("half second.mp3");
  stage.Advance(1s);
  EXPECT_TRUE(stage.engine->BASS_ChannelPlay(stream, false));
  stage.Advance(300ms);
  EXPECT_TRUE(stage.engine->Heard(stream).playing);
  EXPECT_NEAR(static_cast<double>(Frame(stream)), 0.22 * kRate, 0.03 * kRate);
}

TEST_F(HeardClock, AStreamThatStartsAtAPlaceNeverShowsAnother) {
  Play("ramp.mp3");
  stage.Advance(1s);
  const auto stream = stage.Load("ramp.mp3");
  stage.engine->BASS_ChannelSetPosition(stream, {4 * 200'000});
  stage.engine->BASS_ChannelPlay(stream, false);
  stage.Advance(25ms);
  for (int i = 0; i < 20; ++i, stage.Advance(7ms)) EXPECT_GE(Frame(stream), 200'000);
}

}  // namespace
}  // namespace engine::testing
