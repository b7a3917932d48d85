// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>

#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

class Devices : public ::testing::Test {
 protected:
  void SetUp() override {
    FakeFile file = RampFile(60 * kRate);
    file.sample = [](std::int64_t, int channel) {
      return static_cast<std::int16_t>(channel == 0 ? 16384 : 8192);
    };
    stage.files.Add("level.mp3", file);
    stage.files.Add("tone.mp3", ToneFile(60 * kRate, 200));
  }
  decks::StreamHandle Play(int device, const std::string& path = "level.mp3") {
    const auto stream = stage.Load(path, device);
    stage.engine->BASS_ChannelPlay(stream, false);
    return stream;
  }
  double Seconds(decks::StreamHandle stream) {
    return static_cast<double>(stage.engine->Heard(stream).frame.value) / kRate;
  }
  std::vector<decks::DeviceEvent::Kind> Events() {
    std::vector<decks::DeviceEvent::Kind> kinds;
    for (const auto& event : stage.engine->TakeDeviceEvents()) kinds.push_back(event.kind);
    return kinds;
  }

  using Kind = decks::DeviceEvent::Kind;
  SoundStage stage;
};

TEST_F(Devices, AreNumberedFromOneTheDefaultFirst) {
  SoundStage other({StereoOutput("b"), StereoOutput("a", true)});
  EXPECT_EQ(other.engine->BASS_GetDeviceDescription(1), "Output a");
  EXPECT_EQ(other.engine->BASS_GetDeviceDescription(2), "Output b");
  EXPECT_EQ(other.engine->BASS_GetDeviceDescription(3), std::nullopt);
  EXPECT_EQ(other.engine->BASS_GetDeviceDescription(-1), std::nullopt);
}

TEST_F(Devices, KeepTheirNumbersWhenOthersComeAndGo) {
  stage.outputs.Remove("main");
  stage.outputs.Add(StereoOutput("new"));
  stage.engine->Pump();
  stage.looking.RunAll();
  EXPECT_EQ(stage.engine->BASS_GetDeviceDescription(2), "Output phones");
  EXPECT_EQ(stage.engine->BASS_GetDeviceDescription(4), "Output new");
  const auto events = stage.engine->TakeDeviceEvents();
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].kind, Kind::Listed);
  EXPECT_EQ(events[0].device, 4);
}

TEST_F(Devices, ThatAreNotThereOrNotOpenRefuse) {
  EXPECT_FALSE(stage.engine->BASS_Init(4, kRate, 0));
  EXPECT_FALSE(stage.engine->BASS_SetDevice(1));
  stage.outputs.SetBroken("main", true);
  EXPECT_FALSE(stage.engine->BASS_Init(1, kRate, 0));
  EXPECT_FALSE(stage.engine->BASS_Init(2, 3, 0));
}

TEST_F(Devices, OpeningOneLeavesTheCurrentOneAsItIs) {
  ASSERT_TRUE(stage.engine->BASS_Init(1, kRate, 0) && stage.engine->BASS_SetDevice(1));
  ASSERT_TRUE(stage.engine->BASS_Init(2, kRate, 0));
  const auto decoder = stage.engine->BASS_StreamCreateFile(false, "level.mp3", 0, 0, decks::kStreamDecode);
  stage.engine->BASS_ChannelPlay(stage.engine->BASS_FX_TempoCreate(decoder, decks::kTempoFreeSource), false);
  stage.Advance(1s);
  EXPECT_EQ(stage.Last("main", 0), 0.5F);
  EXPECT_EQ(stage.Last("phones", 0), 0);
}

TEST_F(Devices, WithoutSoundKeepTime) {
  const auto stream = Play(0);
  stage.Advance(2s);
  EXPECT_NEAR(Seconds(stream), 2, 0.1);
  EXPECT_EQ(stage.engine->BASS_ChannelGetLevel(stream), 16384U | 8192U << 16);
}

TEST_F(Devices, ALostMainOutputIsReplacedAndNothingStops) {
  const auto stream = Play(1);
  stage.Advance(2s);
  const double before = Seconds(stream);
  stage.outputs.Remove("main");
  stage.Advance(2s);
  EXPECT_NEAR(Seconds(stream) - before, 2, 0.1);
  EXPECT_EQ(Events(), (std::vector{Kind::Lost, Kind::Replaced}));
  EXPECT_EQ(stage.Last("phones", 0), 0.5F);
  EXPECT_EQ(stage.Given("phones").front(), 0.5F) << "nor is what the limiter held lost";
}

TEST_F(Devices, ALostMainOutputIsReplacedWhileADeadDiskHoldsEveryWorker) {
  Play(1);
  stage.Advance(1s);
  stage.StopWorkers();
  stage.outputs.Remove("main");
  stage.Advance(1s);
  EXPECT_EQ(Events(), (std::vector{Kind::Lost, Kind::Replaced}));
}

TEST_F(Devices, AMainOutputThatCameBackIsReturnedToOnRequestOnly) {
  const auto stream = Play(1, "tone.mp3");
  stage.Advance(1s);
  stage.outputs.Remove("main");
  stage.Advance(2s);
  stage.outputs.Add(StereoOutput("main"));
  stage.Advance(1s);
  EXPECT_EQ(Events(), (std::vector{Kind::Lost, Kind::Replaced, Kind::CanReturn}));
  const std::size_t given = stage.Given("main").size();
  stage.Advance(1s);
  EXPECT_EQ(stage.Given("main").size(), given) << "it stays where it is";
  const double before = Seconds(stream);
  stage.engine->ReturnDevice(1);
  stage.Advance(1s);
  EXPECT_EQ(Events(), std::vector{Kind::Returned});
  EXPECT_GT(stage.Given("main").size(), given);
  EXPECT_NEAR(Seconds(stream) - before, 1, 0.1);
  stage.engine->ReturnDevice(1);
  stage.Advance(100ms);
  EXPECT_TRUE(Events().empty()) << "it is there";
}

TEST_F(Devices, ASuspendedOutputIsLeftAtOnceUnderItsTrueNameAndReturnedToWhenItWakes) {
  Play(1);
  stage.Advance(1s);
  stage.outputs.Suspend("main");
  stage.Advance(100ms);
  const auto events = stage.engine->TakeDeviceEvents();
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[0].text, "The sound output Output main is gone; another one is being looked for.");
  EXPECT_EQ(events[1].text, "Playing goes on through Output phones.");
  EXPECT_EQ(stage.Last("phones", 0), 0.5F);
  stage.Advance(5s);
  EXPECT_TRUE(Events().empty()) << "it is in the list, but sleeps";
  stage.outputs.Wake("main");
  stage.Advance(2s);
  EXPECT_EQ(Events(), std::vector{Kind::CanReturn});
  stage.engine->ReturnDevice(1);
  stage.Advance(1s);
  EXPECT_EQ(Events(), std::vector{Kind::Returned});
  EXPECT_EQ(stage.Last("main", 0), 0.5F);
}

TEST_F(Devices, SuspendedHeadphonesAreSilentUntilTheyWake) {
  stage.engine->SetDeviceRole(2, decks::DeviceRole::Headphones);
  Play(2);
  Play(1);
  stage.Advance(1s);
  stage.outputs.Suspend("phones");
  stage.Advance(3s);
  EXPECT_EQ(Events(), std::vector{Kind::Muted});
  stage.outputs.Wake("phones");
  stage.Advance(2s);
  EXPECT_EQ(Events(), std::vector{Kind::Returned});
}

TEST_F(Devices, WhatTheUserMovesIsToldOnceAndTheDeviceIsItsOwnAgainWhenItsStreamsHaveGone) {
  Play(1);
  stage.Advance(1s);
  stage.outputs.MoveByHand("main", "other");
  stage.Advance(500ms);
  const auto events = stage.engine->TakeDeviceEvents();
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].kind, Kind::Moved);
  EXPECT_EQ(events[0].device, 1);
  EXPECT_EQ(events[0].moved_to, 3);
  EXPECT_EQ(stage.Last("other", 0), 0.5F) << "nothing is torn back";
  stage.Advance(3s);
  EXPECT_TRUE(Events().empty());
  EXPECT_EQ(stage.Last("main", 0), 0.5F);
}

TEST_F(Devices, AnOutputThatGoesAgainCannotBeReturnedTo) {
  Play(1);
  for (const bool there : {false, true, false}) {
    if (there) {
      stage.outputs.Add(StereoOutput("main"));
    } else {
      stage.outputs.Remove("main");
    }
    stage.Advance(2s);
  }
  EXPECT_EQ(Events(), (std::vector{Kind::Lost, Kind::Replaced, Kind::CanReturn, Kind::CannotReturn}));
  stage.engine->ReturnDevice(1);
  stage.Advance(100ms);
  EXPECT_TRUE(Events().empty());
}

TEST_F(Devices, PositionGoesOnWhileNoOutputWorks) {
  const auto stream = Play(1);
  stage.Advance(1s);
  const double before = Seconds(stream);
  for (const char* id : {"main", "phones", "other"}) stage.outputs.Remove(id);
  stage.Advance(3s);
  EXPECT_NEAR(Seconds(stream) - before, 3, 0.1);
  EXPECT_EQ(Events(), (std::vector{Kind::Lost}));
  stage.outputs.Add(StereoOutput("late"));
  stage.Advance(500ms);
  EXPECT_EQ(Events(), (std::vector{Kind::Listed, Kind::Replaced}));
  EXPECT_NEAR(Seconds(stream) - before, 3.5, 0.1);
}

TEST_F(Devices, ALostMainOutputNeverMovesToTheHeadphones) {
  stage.engine->SetDeviceRole(2, decks::DeviceRole::Headphones);
  Play(2);
  Play(1);
  stage.Advance(1s);
  stage.outputs.Remove("main");
  stage.Advance(1s);
  EXPECT_EQ(stage.Last("other", 0), 0.5F);
  EXPECT_EQ(stage.Last("phones", 0), 0.5F);  // its own stream, not both
}

TEST_F(Devices, AnOutputThatCannotBeOpenedIsPassedOver) {
  Play(1);
  stage.Advance(1s);
  stage.outputs.SetBroken("phones", true);
  stage.outputs.Remove("main");
  stage.Advance(1s);
  EXPECT_EQ(stage.Last("other", 0), 0.5F);
}

TEST_F(Devices, LostHeadphonesFallSilentGoOnAndComeBack) {
  stage.engine->SetDeviceRole(2, decks::DeviceRole::Headphones);
  const auto stream = Play(2);
  Play(1);
  stage.Advance(1s);
  const double before = Seconds(stream);
  stage.outputs.Remove("phones");
  stage.Advance(1s);
  EXPECT_EQ(Events(), (std::vector{Kind::Muted}));
  EXPECT_NEAR(Seconds(stream) - before, 1, 0.1);
  EXPECT_EQ(stage.Last("main", 0), 0.5F);
  stage.outputs.Add(StereoOutput("phones"));
  stage.Advance(1s);
  EXPECT_EQ(Events(), (std::vector{Kind::Returned}));
  EXPECT_EQ(stage.Last("phones", 0), 0.5F);
}

TEST_F(Devices, ThePlaceNeverGoesBackOverALoss) {
  const auto stream = Play(1, "tone.mp3");
  stage.Advance(1s);
  double last = Seconds(stream);
  for (int i = 0; i < 100; ++i) {
    if (i == 20) stage.outputs.Remove("main");
    if (i == 60) stage.outputs.Remove("phones");
    stage.Advance(9ms);
    EXPECT_GE(Seconds(stream), last);
    last = Seconds(stream);
  }
}

TEST_F(Devices, FreeingTheEngineClosesThemAndForgetsEveryStream) {
  const auto stream = Play(1);
  stage.Advance(100ms);
  stage.engine->BASS_Free();
  stage.Advance(100ms);
  EXPECT_FALSE(stage.engine->BASS_ChannelPlay(stream, false));
  EXPECT_FALSE(stage.engine->BASS_SetDevice(1));
  EXPECT_NE(Play(1), 0U);
}

TEST_F(Devices, ManyFreedStreamsLeaveRoomForNewOnes) {
  for (int i = 0; i < 100; ++i) {
    const auto stream = Play(1);
    ASSERT_NE(stream, 0U) << i;
    stage.Advance(30ms);
    stage.engine->BASS_StreamFree(stream);
    stage.Advance(30ms);
  }
}

TEST_F(Devices, TooManyStreamsAtOnceAreRefusedWithASentence) {
  for (int i = 0; i < RenderCore::kStreams; ++i) ASSERT_NE(Play(1), 0U);
  EXPECT_EQ(Play(1), 0U);
  EXPECT_NE(stage.engine->LastError().text, "");
}

struct PairCase {
  const char* name;
  std::uint32_t flag;
  std::array<float, 8> heard;  ///< front, rear, centre, LFE, side
};

class SpeakerPairs : public ::testing::TestWithParam<PairCase> {};

TEST_P(SpeakerPairs, GoToTheirChannelsAndNoOther) {
  SoundStage stage({EightChannelOutput("eight")});
  FakeFile file = RampFile(kRate);
  file.sample = [](std::int64_t, int channel) {
    return static_cast<std::int16_t>(channel == 0 ? 16384 : 8192);
  };
  stage.files.Add("level.mp3", file);
  stage.engine->BASS_ChannelPlay(stage.Load("level.mp3", 1, GetParam().flag), false);
  stage.Advance(200ms);
  for (std::size_t c = 0; c < 8; ++c) EXPECT_EQ(stage.Last("eight", c, 8), GetParam().heard[c]) << c;
}

INSTANTIATE_TEST_SUITE_P(
    All, SpeakerPairs,
    ::testing::Values(PairCase{"Front", decks::kSpeakerFront, {0.5F, 0.25F, 0, 0, 0, 0, 0, 0}},
                      PairCase{"Rear", decks::kSpeakerRear, {0, 0, 0.5F, 0.25F, 0, 0, 0, 0}},
                      PairCase{"CentreLfe", decks::kSpeakerCentreLfe, {0, 0, 0, 0, 0.5F, 0.25F, 0, 0}},
                      PairCase{"SecondRear", decks::kSpeakerRear2, {0, 0, 0, 0, 0, 0, 0.5F, 0.25F}},
                      PairCase{"None", 0, {0.5F, 0.25F, 0.5F, 0.25F, 0.375F, 0.375F, 0.5F, 0.25F}}),
    [](const auto& instance) { return instance.param.name; });

TEST_F(Devices, APairThatTheOutputLacksIsAllItsSpeakers) {
  const auto stream = stage.Load("level.mp3", 1, decks::kSpeakerRear);
  stage.engine->BASS_ChannelPlay(stream, false);
  stage.Advance(200ms);
  EXPECT_EQ(stage.Last("main", 0), 0.5F);
  EXPECT_EQ(stage.Last("main", 1), 0.25F);
}

TEST_F(Devices, ASpeakerPairMayComeInTheLength) {
  SoundStage eight({EightChannelOutput("eight")});
  FakeFile file = RampFile(kRate);
  file.sample = [](std::int64_t, int) { return std::int16_t{16384}; };
  eight.files.Add("level.mp3", file);
  ASSERT_TRUE(eight.engine->BASS_Init(1, kRate, 0) && eight.engine->BASS_SetDevice(1));
  const auto decoder =
      eight.engine->BASS_StreamCreateFile(false, "level.mp3", 0, decks::kSpeakerRear, 0x200000);
  eight.engine->BASS_ChannelPlay(eight.engine->BASS_FX_TempoCreate(decoder, 0x10004), false);
  eight.Advance(200ms);
  EXPECT_EQ(eight.Last("eight", 0, 8), 0);
  EXPECT_EQ(eight.Last("eight", 2, 8), 0.5F);
}

TEST_F(Devices, AMonoOutputGetsHalfOfEachSide) {
  SoundStage mono({{"mono", "Mono", {Speaker::Mono}, true}});
  FakeFile file = RampFile(kRate);
  file.sample = [](std::int64_t, int channel) {
    return static_cast<std::int16_t>(channel == 0 ? 16384 : 8192);
  };
  mono.files.Add("level.mp3", file);
  mono.engine->BASS_ChannelPlay(mono.Load("level.mp3"), false);
  mono.Advance(200ms);
  EXPECT_EQ(mono.Last("mono", 0, 1), 0.375F);
}

}  // namespace
}  // namespace engine::testing
