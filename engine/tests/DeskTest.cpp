// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// What the head-phones hear of the hall, and how loud that is.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "decks/testing/DeskContract.h"
#include "engine/testing/SoundStage.h"

namespace decks::testing {
namespace {

struct RealDesk {
  RealDesk() {
    for (const int device : {1, 2}) stage.engine->BASS_Init(device, 44100, kInitSpeakers);
  }
  SoundDesk& Desk() { return stage.engine->Desk(); }
  void GoOn() { stage.Advance(std::chrono::milliseconds(300)); }
  engine::testing::SoundStage stage{
      {engine::testing::EightChannelOutput("wide"), engine::testing::StereoOutput("phones")}};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Real, EveryDesk, RealDesk);

}  // namespace
}  // namespace decks::testing

namespace engine::testing {
namespace {

using decks::HeadphoneMix;

FakeFile Level(std::int16_t left, std::int16_t right) {
  FakeFile file = ToneFile(60 * kRate, 0);
  file.sample = [left, right](std::int64_t, int channel) { return channel == 0 ? left : right; };
  return file;
}

/// A hall on the front pair of a card and head-phones on its rear pair, told apart by their levels.
class HallInThePhones : public ::testing::Test {
 protected:
  HallInThePhones() {
    stage.outputs.SetBlocks({882, 137, 500, 1});
    stage.files.Add("hall.mp3", Level(8192, 4096));
    stage.files.Add("cue.mp3", Level(2048, 1024));
    hall = stage.Load("hall.mp3", 1, decks::kSpeakerFront);
    cue = stage.Load("cue.mp3", 1, decks::kSpeakerRear);
    for (const auto stream : {hall, cue}) stage.engine->BASS_ChannelPlay(stream, false);
    stage.Advance(300ms);
  }
  void Mix(const HeadphoneMix& mix) {
    const decks::SpeakerPair front{1, decks::kSpeakerFront};
    stage.engine->Desk().Direct({{front, front}, {1, decks::kSpeakerRear}, mix});
    stage.Advance(300ms);
  }
  float Phones(std::size_t ear) { return stage.Last("wide", 2 + ear, 8); }
  void ExpectPhones(double left, double right, const char* why = "") {
    EXPECT_NEAR(Phones(0), left, 1e-5) << why;
    EXPECT_NEAR(Phones(1), right, 1e-5) << why;
    EXPECT_EQ(stage.Last("wide", 0, 8), 0.25F) << "the hall hears nothing of it";
    EXPECT_EQ(stage.Last("wide", 1, 8), 0.125F);
  }
  SoundStage stage{{EightChannelOutput("wide")}};
  decks::StreamHandle hall = 0, cue = 0;
};

TEST_F(HallInThePhones, TheKnobGoesFromWhatIsListenedToToTheHall) {
  const double half = std::sqrt(0.5);
  ExpectPhones(0.0625, 0.03125, "before anything was said");
  Mix({.programme = 0});
  ExpectPhones(0.0625, 0.03125);
  Mix({.programme = 0.5F});
  ExpectPhones(half * (0.0625 + 0.25), half * (0.03125 + 0.125));
  Mix({.programme = 1});
  ExpectPhones(0.25, 0.125);
  Mix({.programme = 1, .level = 0.5F});
  ExpectPhones(0.125, 0.0625);
  Mix({.programme = 0.3F, .split = true});
  ExpectPhones((0.0625 + 0.03125) / 2, (0.25 + 0.125) / 2, "each ear has its own, whole");
  Mix({});
  ExpectPhones(0.0625, 0.03125, "and back, bit for bit");
  const auto left = stage.Channel("wide", 2, 8);
  float largest = 0;
  for (std::size_t i = kRate / 5; i < left.size(); ++i) {
    largest = std::max(largest, std::abs(left[i] - left[i - 1]));
  }
  EXPECT_LT(largest, 0.001F) << "nothing jumped on the way";
}

TEST_F(HallInThePhones, WhatIsInTheHallAndInTheCueIsHeardInStep) {
  stage.files.Add("tone.mp3", ToneFile(60 * kRate, 997, 0.2));
  for (const auto stream : {hall, cue}) stage.engine->BASS_StreamFree(stream);
  const auto main = stage.Load("tone.mp3", 1, decks::kSpeakerFront);
  const auto copy = stage.Load("tone.mp3", 1, decks::kSpeakerRear);
  stage.engine->Follow(copy, main);
  Mix({.programme = 0.5F});
  stage.engine->BASS_ChannelPlay(main, false);
  stage.engine->BASS_ChannelPlay(copy, false);
  stage.Advance(1s);
  const auto left = stage.Channel("wide", 2, 8);
  EXPECT_NEAR(*std::max_element(left.end() - 4410, left.end()), 0.4 * std::sqrt(0.5), 0.001);
}

TEST_F(HallInThePhones, ALoudHallInTheHeadphonesTurnsOnlyThemDown) {
  stage.engine->SetGain(hall, {11});
  stage.engine->SetGain(cue, {20});
  Mix({.programme = 0.5F});
  EXPECT_LE(Phones(0), 1.0F);
  EXPECT_NEAR(stage.Last("wide", 0, 8), 0.25 * 3.548, 0.001);
  EXPECT_EQ(stage.engine->LimiterReduction(1, decks::kSpeakerFront).value, 0);
  EXPECT_GT(stage.engine->LimiterReduction(1, decks::kSpeakerRear).value, 0);
}

/// One output, whose meter is read as it is heard.
class Meter : public ::testing::Test {
 protected:
  void Play(double hertz, double level) {
    const std::string name = std::to_string(hertz) + ".mp3";
    stage.files.Add(name, ToneFile(20 * kRate, hertz, level));
    stream = stage.Load(name, 1);
    stage.engine->Desk().Direct({{decks::SpeakerPair{1, 0}, {1, 0}}, {}, {}});
    stage.engine->BASS_ChannelPlay(stream, false);
  }
  decks::MasterReading Read() { return stage.engine->Desk().Master(); }
  SoundStage stage;
  decks::StreamHandle stream = 0;
};

TEST_F(Meter, ATonePlayedAtMinus23ReadsMinus23Lufs) {
  // EBU Tech 3341, the first of its test signals.
  Play(1000, std::pow(10.0, -23.0 / 20));
  stage.Advance(5s);
  EXPECT_NEAR(Read().momentary.value, -23, 0.1);
  EXPECT_NEAR(Read().short_term.value, -23, 0.1);
  EXPECT_NEAR(Read().true_peak.value, -23, 0.1);
  EXPECT_EQ(Read().reduction.value, 0);
}

TEST_F(Meter, WeighsBassLessAndTrebleMore) {
  struct Case {
    double hertz, more;
  };
  // Read off the tables of BS.1770-4 at 48 kHz.
  for (const Case& one : {Case{40, -6.2}, Case{100, -1.9}, Case{10'000, 3.3}}) {
    Play(one.hertz, 0.1);
    stage.Advance(2s);
    EXPECT_NEAR(Read().momentary.value, -20 + one.more, 0.5) << one.hertz;
    stage.engine->BASS_StreamFree(stream);
    stage.Advance(1s);
  }
}

TEST_F(Meter, IsShortForAMomentAndLongForThreeSeconds) {
  Play(1000, 0.1);
  stage.Advance(5s);
  stage.engine->BASS_ChannelPause(stream);
  stage.Advance(700ms);
  EXPECT_LT(Read().momentary.value, -90);
  EXPECT_NEAR(Read().short_term.value, -21.0, 0.5) << "23 of the last 30 tenths";
  stage.Advance(4s);
  EXPECT_LT(Read().short_term.value, -90);
  EXPECT_LT(Read().true_peak.value, -90);
}

TEST_F(Meter, TellsWhatTheLimiterTakesAwayAndThatNothingPassesFullScale) {
  Play(1000, 0.9);
  stage.engine->SetGain(stream, {6});
  stage.Advance(1s);
  EXPECT_NEAR(Read().reduction.value, 6 + 20 * std::log10(0.9), 0.2);
  EXPECT_LE(Read().true_peak.value, 0.1);
  EXPECT_GT(Read().true_peak.value, -0.5);
}

TEST_F(Meter, IsReadAsItIsHeardNotAsItIsMixed) {
  stage.outputs.SetLatency("main", 1s);
  Play(1000, 0.5);
  stage.Advance(500ms);
  EXPECT_EQ(Read().momentary, decks::MasterReading::kSilence);
}

}  // namespace
}  // namespace engine::testing
