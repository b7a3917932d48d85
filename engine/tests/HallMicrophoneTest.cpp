// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/HallMicrophone.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <utility>

#include "engine/testing/SpokenHall.h"
#include "support/Sentences.h"
#include "support/testing/RealtimeGuard.h"

namespace engine::testing {
namespace {

using support::Sentence;

double Db(double level) {
  return 20 * std::log10(std::max(level, 1e-9));
}

float Hum(double seconds, double level) {
  return static_cast<float>(level * std::sin(2 * std::numbers::pi * 300 * seconds));
}

/// From a moment of the air to that of the ear: a pulse is spoken, and what comes out is listened to.
double MouthToEar(SpokenHall& hall) {
  const double spoken = std::ceil(hall.Seconds() * 10) / 10 + 0.1;
  hall.inputs.Hear([spoken](double at) {
    const double into = (at - spoken) * 1000;  // a bump of 1 ms
    return into < 0 || into > 1 ? 0.0F : static_cast<float>(0.5 * std::sin(std::numbers::pi * into));
  });
  std::optional<double> heard;
  hall.stage.outputs.Listen("main", [&](std::span<const float> block) {
    const auto loudest = std::max_element(block.begin(), block.end());
    if (*loudest < 0.45F) return;
    const auto frame = (loudest - block.begin()) / 2;
    const int buffer = hall.stage.outputs.BufferOf("main");
    heard = hall.Seconds() + static_cast<double>(frame) / kRate + (buffer == 0 ? 60 : buffer) / 1000.0;
  });
  hall.Advance(600ms);
  return heard ? *heard - spoken - 0.0005 : -1;
}

TEST(HallMicrophone, NothingIsRecordedUntilItIsAskedFor) {
  SpokenHall hall;
  hall.inputs.Hear([](double at) { return Hum(at, 0.3); });
  hall.Ask();
  hall.Advance(2s);
  EXPECT_EQ(hall.inputs.OpenInputs(), 0);
  EXPECT_FALSE(hall.Now().open);
  hall.wish.check = true;
  hall.Ask();
  hall.Advance(1s);
  EXPECT_EQ(hall.inputs.OpenInputs(), 1);
  EXPECT_GT(hall.Now().level, -20);
  EXPECT_FALSE(hall.Now().heard);
  const auto heard = hall.stage.Channel("main", 0);
  EXPECT_EQ(FirstSound(heard), heard.size()) << "a check of the level is not heard";
  hall.wish.check = false;
  hall.Switch(true);
  hall.Advance(1s);
  EXPECT_TRUE(hall.Now().heard);
  EXPECT_GT(ToneLevel(hall.stage.Channel("main", 1), 3 * kRate + kRate / 2, kRate / 4, 300), 0.2);
  hall.Switch(false);
  hall.Advance(1s);
  EXPECT_EQ(hall.inputs.OpenInputs(), 0);
  EXPECT_EQ(hall.stage.Last("main", 0), 0);
}

TEST(HallMicrophone, IsHeardWithin25MillisecondsForHalfAnHourOfTwoCrystals) {
  for (const auto& [millionths, minutes] : {std::pair{200.0, 30}, std::pair{-200.0, 3}}) {
    SpokenHall hall;
    hall.inputs.SetClock(millionths);
    hall.SpeakPlainly();
    hall.Switch(true);
    hall.Advance(2s);
    EXPECT_LT(MouthToEar(hall), 0.025);
    EXPECT_GT(MouthToEar(hall), 0.010);
    hall.inputs.Hear([](double at) { return Hum(at, 0.3); });
    float roughest = 0;
    std::array<float, 2> last{};
    double longest = 0;
    bool settled = false;
    hall.stage.outputs.Listen("main", [&](std::span<const float> block) {
      for (std::size_t i = 0; i < block.size(); i += 2) {
        if (settled) roughest = std::max(roughest, std::abs(block[i] - 2 * last[1] + last[0]));
        last = {last[1], block[i]};
      }
    });
    hall.Advance(1s);
    settled = true;
    for (int minute = 0; minute < minutes; ++minute) {
      hall.Advance(1min);
      longest = std::max(longest, std::chrono::duration<double>(hall.Now().latency).count());
    }
    EXPECT_LT(roughest, 1.05F * ToneRoughness(300, 0.3)) << "a gap or a click";
    EXPECT_LT(longest, 0.025);
    EXPECT_EQ(hall.Now().gaps, 0U);
    const double told = std::chrono::duration<double>(hall.Now().latency).count();
    EXPECT_NEAR(MouthToEar(hall), told, 0.0008) << "what is told is what is heard";
  }
}

TEST(HallMicrophone, MusicMakesWayForAVoiceAndComesBackBitForBit) {
  const auto play = [](bool with_voice) {
    auto hall = std::make_unique<SpokenHall>();
    hall->inputs.Hear([](double at) { return Syllables(at, 3, 5); });
    hall->wish.duck = {true, 12, 50ms, 400ms, 600ms};
    hall->PlayMusic();
    if (with_voice) hall->Switch(true);
    hall->Advance(8s);
    return hall->stage.Channel("main", 0);
  };
  const auto plain = play(false), spoken = play(true);
  const auto music = [&](double at) {
    return Db(ToneLevel(spoken, static_cast<std::size_t>(at * kRate), kRate / 100, 5000) / 0.25);
  };
  // From the first syllable: mouth to mixing, half a syllable's swell, and the attack.
  EXPECT_NEAR(music(2.95), 0, 0.1);
  EXPECT_NEAR(music(3.11), -12, 0.3);
  for (double at = 3.2; at < 5.2; at += 0.1) EXPECT_NEAR(music(at), -12, 0.4) << at;
  EXPECT_GT(ToneLevel(spoken, kRate * 7 / 2, kRate, 150), 0.05) << "the voice itself";
  const std::size_t back = std::size_t{kRate} * 65 / 10;
  ASSERT_GE(spoken.size(), 7U * kRate);
  for (std::size_t i = back; i < std::size_t{7} * kRate; ++i) ASSERT_EQ(spoken[i], plain[i]) << i;
}

TEST(HallMicrophone, TheTalkOverKeyLowersTheMusicWhetherAnyoneSpeaksOrNot) {
  SpokenHall hall;
  hall.PlayMusic();
  hall.Advance(1s);
  hall.wish.talk_over = true;
  hall.Ask();
  hall.Advance(500ms);
  EXPECT_NEAR(hall.Now().ducking, 12, 0.01);
  EXPECT_TRUE(hall.Now().gate_open);
  EXPECT_TRUE(hall.Now().heard);
  hall.wish.talk_over = false;
  hall.Ask();
  hall.Advance(2s);
  EXPECT_EQ(hall.Now().ducking, 0);
  EXPECT_EQ(hall.inputs.OpenInputs(), 0);
}

TEST(HallMicrophone, ComesAndGoesWithoutAClick) {
  SpokenHall hall;
  hall.SpeakPlainly();
  hall.inputs.Hear([](double at) { return Hum(at, 0.3); });
  for (const auto pause : {300ms, 310ms, 1ms, 33ms, 500ms, 7ms, 400ms}) {
    hall.Switch(!hall.wish.on);
    hall.Advance(pause);
  }
  hall.Switch(false);
  hall.Advance(200ms);
  const auto out = hall.stage.Channel("main", 0);
  EXPECT_GT(*std::max_element(out.begin(), out.end()), 0.25F);
  // The slope of the tone itself is 0.013 a frame; of a fade of 5 ms a little more.
  for (std::size_t i = 1; i < out.size(); ++i) ASSERT_LT(std::abs(out[i] - out[i - 1]), 0.03F) << i;
}

TEST(HallMicrophone, TakesNoMemoryAndNoLockInTheCallbacks) {
  ASSERT_TRUE(support::testing::RealtimeGuardWorks() || !DJ_REALTIME_GUARD);
  SpokenHall hall;
  hall.PlayMusic();
  hall.inputs.Hear([](double at) { return Syllables(at, 0, 100); });
  hall.Switch(true);
  const long faults = support::testing::CountRealtimeFaults([&] { hall.Advance(3s); });
  EXPECT_EQ(faults, 0);
  EXPECT_GT(hall.Now().ducking, 11);
}

TEST(HallMicrophone, OneThatIsPulledIsMissedOnceAndComesBackByItself) {
  SpokenHall hall({Microphone("desk", true), Microphone("lap")});
  hall.PlayMusic();
  hall.inputs.Hear([](double at) { return Hum(at, 0.3); });
  hall.Switch(true);
  hall.Advance(2s);
  hall.inputs.Remove("desk");
  hall.Advance(3s);
  EXPECT_EQ(hall.Now().trouble.sentence, Sentence::InputGone);
  EXPECT_EQ(hall.Now().trouble.parts, std::vector<std::string>{"Microphone desk"});
  EXPECT_FALSE(hall.Now().open) << "another one, which may stand before a loudspeaker, is not taken";
  const auto size = hall.stage.Given("main").size();
  hall.Advance(1s);
  EXPECT_GT(hall.stage.Given("main").size(), size + kRate) << "the music goes on";
  EXPECT_EQ(hall.Now().ducking, 0);
  hall.inputs.Add(Microphone("desk", true));
  hall.Advance(2s);
  EXPECT_EQ(hall.Now().trouble, support::Saying{});
  EXPECT_EQ(hall.Now().device, "desk");
  EXPECT_GT(hall.Now().ducking, 11);
}

TEST(HallMicrophone, OneThatHangsDiesAwayAndGoesOn) {
  SpokenHall hall;
  hall.SpeakPlainly();
  hall.inputs.Hear([](double at) { return Hum(at, 0.3); });
  hall.Switch(true);
  hall.Advance(1s);
  for (int i = 0; i < 3; ++i) {
    hall.inputs.Hang(true);
    hall.Advance(500ms);
    EXPECT_EQ(hall.stage.Last("main", 0), 0);
    hall.inputs.Hang(false);
    hall.Advance(500ms);
    EXPECT_NE(hall.stage.Last("main", 0), 0);
  }
  EXPECT_EQ(hall.Now().gaps, 3U);
  const auto out = hall.stage.Channel("main", 0);
  for (std::size_t i = 1; i < out.size(); ++i) ASSERT_LT(std::abs(out[i] - out[i - 1]), 0.03F) << i;
}

TEST(HallMicrophone, IsTakenFromTheChannelChosenAtAnyRate) {
  struct Case {
    int channels, rate, chosen;
    double level;
  };
  // The last of several channels is silent.
  for (const auto& [channels, rate, chosen, level] :
       {Case{1, 8000, 1, 0.3}, Case{1, 192'000, 1, 0.3}, Case{8, 48'000, 1, 0.3}, Case{8, 48'000, 8, 0.0},
        Case{8, 44'100, 9, 0.3}, Case{2, 16'000, 0, 0.15}}) {
    SpokenHall hall({Microphone("desk", true, channels, rate)});
    hall.SpeakPlainly();
    hall.wish.channel = chosen;
    hall.inputs.Hear([](double at) { return Hum(at, 0.3); });
    hall.Switch(true);
    hall.Advance(2s);
    EXPECT_NEAR(ToneLevel(hall.stage.Channel("main", 0), kRate, kRate / 2, 300), level, 0.01)
        << channels << " " << rate << " " << chosen;
  }
}

TEST(HallMicrophone, SaysWhyItIsNotHeard) {
  InputDeviceInfo loop = Microphone("main.monitor"), other = Microphone("player.monitor", true);
  loop.monitor_of = "main";
  other.monitor_of = "some other output";
  SpokenHall hall({other, loop});
  const auto trouble = [&](const std::string& device) {
    hall.wish.device = device;
    hall.Switch(true);
    hall.Advance(100ms);
    return hall.Now().trouble.sentence;
  };
  EXPECT_EQ(trouble(""), Sentence::NoInput) << "what plays elsewhere is no microphone unless it is chosen";
  EXPECT_EQ(trouble("main.monitor"), Sentence::InputLoop);
  EXPECT_EQ(hall.inputs.OpenInputs(), 0);
  EXPECT_TRUE(hall.Now().inputs->at(1).loop);
  EXPECT_EQ(trouble("none"), Sentence::InputMissing);
  EXPECT_EQ(trouble("player.monitor"), Sentence{});
  hall.inputs.Mute("player.monitor", true);
  hall.Advance(100ms);
  EXPECT_EQ(hall.Now().trouble.sentence, Sentence::InputMuted);
  EXPECT_TRUE(hall.Now().open);
  hall.inputs.Mute("player.monitor", false);
  hall.Advance(100ms);
  EXPECT_EQ(hall.Now().trouble.sentence, Sentence{});
}

TEST(HallMicrophone, BecomesALoopAndIsClosedWhereTheHallMovesUnderIt) {
  InputDeviceInfo monitor = Microphone("other.monitor");
  monitor.monitor_of = "other";
  SpokenHall hall({monitor});
  hall.wish.device = "other.monitor";
  hall.Switch(true);
  hall.Advance(1s);
  ASSERT_TRUE(hall.Now().open);
  hall.stage.engine->BASS_Init(3, kRate, 0);
  hall.wish.hall = {{3, 0}};
  hall.Ask();
  hall.Advance(100ms);
  EXPECT_FALSE(hall.Now().open);
  EXPECT_EQ(hall.Now().trouble.sentence, Sentence::InputLoop);
}

TEST(HallMicrophone, SpeaksOnTheHallsPairsAlone) {
  SpokenHall hall({Microphone("desk", true)}, {EightChannelOutput("main")});
  hall.SpeakPlainly();
  hall.inputs.Hear([](double at) { return Hum(at, 0.3); });
  hall.wish.hall = {{1, 1}};
  hall.Switch(true);
  hall.Advance(1s);
  hall.wish.hall = {{1, 1}, {1, 2}, {1, 1}};
  hall.Ask();
  hall.Advance(1s);
  const auto level = [&](std::size_t channel, std::size_t from) {
    return ToneLevel(hall.stage.Channel("main", channel, 8), from, kRate / 4, 300);
  };
  EXPECT_NEAR(level(0, kRate / 2), 0.3, 0.01);
  EXPECT_NEAR(level(1, kRate / 2), 0.3, 0.01);
  for (std::size_t channel = 2; channel < 8; ++channel) EXPECT_EQ(level(channel, kRate / 2), 0) << channel;
  for (std::size_t channel = 0; channel < 4; ++channel) {
    EXPECT_NEAR(level(channel, kRate * 3 / 2), 0.3, 0.01) << channel;
  }
}

TEST(HallMicrophone, OutputsHoldLittleWhileItIsHeardAndFillUpGently) {
  SpokenHall hall;
  hall.PlayMusic(200);
  hall.Advance(1s);
  hall.Switch(true);
  hall.Advance(500ms);
  EXPECT_EQ(hall.stage.outputs.BufferOf("main"), 10);
  hall.stage.outputs.RunDry("main");
  hall.Advance(100ms);
  EXPECT_EQ(hall.stage.outputs.BufferOf("main"), 15) << "one that is not given its sound in time holds more";
  hall.Switch(false);
  hall.Advance(350ms);
  EXPECT_LT(hall.stage.outputs.BufferOf("main"), 40);
  hall.Advance(1s);
  EXPECT_EQ(hall.stage.outputs.BufferOf("main"), 60);
  EXPECT_EQ(hall.stage.engine->Health().late_blocks, 1U) << "the one that was feigned";
  const auto out = hall.stage.Channel("main", 0);
  EXPECT_LT(Roughness(out), 1.5F * ToneRoughness(200, 0.25)) << "no stream ran dry";
}

TEST(HallMicrophone, FollowsTheHallToTheOutputThatTakesItsPlace) {
  SpokenHall hall;
  hall.SpeakPlainly();
  hall.inputs.Hear([](double at) { return Hum(at, 0.3); });
  hall.Switch(true);
  hall.Advance(1s);
  hall.stage.outputs.Remove("main");
  hall.Advance(2s);
  EXPECT_NE(hall.stage.Last("other", 0) + hall.stage.Last("phones", 0), 0);
  EXPECT_LT(std::chrono::duration<double>(hall.Now().latency).count(), 0.025);
}

TEST(HallMicrophone, IsNotInWhatTheLightsFollow) {
  SpokenHall hall;
  hall.inputs.Hear([](double at) { return Syllables(at, 0, 100); });
  const auto stream = hall.PlayMusic();
  hall.Switch(true);
  hall.Advance(2s);
  ASSERT_GT(hall.Now().ducking, 11);
  const auto heard = hall.stage.engine->Heard(stream);
  EXPECT_NEAR(heard.left_peak, 0.25, 0.01) << "neither the voice nor what makes way for it";
}

}  // namespace
}  // namespace engine::testing
