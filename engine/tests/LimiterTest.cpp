// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Limiter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "engine/testing/HotMaster.h"
#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

class LimiterOf : public ::testing::Test {
 protected:
  /// On the left side; the right one is silent.
  std::vector<float> Process(const std::vector<float>& mono, std::size_t block = 100) {
    std::vector<float> out;
    for (std::size_t i = 0; i < mono.size(); i += block) {
      std::vector<float> stereo;
      for (std::size_t k = i; k < std::min(i + block, mono.size()); ++k)
        stereo.insert(stereo.end(), {mono[k], 0});
      limiter.Process(stereo);
      for (std::size_t k = 0; k < stereo.size(); k += 2) out.push_back(stereo[k]);
    }
    return out;
  }
  static std::vector<float> Tone(float level, std::size_t frames) {
    std::vector<float> tone(frames);
    for (std::size_t i = 0; i < frames; ++i) tone[i] = level * std::sin(0.02F * static_cast<float>(i));
    return tone;
  }

  Limiter limiter{kRate};
  const std::size_t late = static_cast<std::size_t>(limiter.LookAhead());
};

TEST_F(LimiterOf, ComesLateByLessThanTwoMilliseconds) {
  EXPECT_LT(limiter.LookAhead(), kRate * 2 / 1000);
}

TEST_F(LimiterOf, LeavesWhatFitsBitForBit) {
  std::mt19937 random(1);
  std::uniform_real_distribution<float> samples(-1, 1);
  std::vector<float> in(20'000);
  for (float& sample : in) sample = 0.4F * samples(random);
  // Up to just below the ceiling and down again.
  for (std::size_t i = 5000; i < 9000; ++i)
    in[i] = 0.99F * std::sin((static_cast<float>(i) - 5000) * 0.0628F);
  const auto out = Process(in);
  for (std::size_t i = late; i < in.size(); ++i) ASSERT_EQ(out[i], in[i - late]) << i;
}

TEST_F(LimiterOf, NeverPassesFullScale) {
  std::mt19937 random(2);
  std::normal_distribution<float> samples(0, 1.5F);
  std::vector<float> in(100'000);
  for (float& sample : in) sample = samples(random);
  for (const float sample : Process(in, 77)) ASSERT_LE(std::abs(sample), 1);
}

TEST_F(LimiterOf, HoldsWhatRisesBetweenTheSamplesToo) {
  // A tone whose every sample lies 3 dB under its crest: the samples alone look harmless.
  std::vector<float> quarter(kRate);
  for (std::size_t i = 0; i < quarter.size(); ++i) {
    quarter[i] =
        1.4F * static_cast<float>(std::sin(std::numbers::pi * (0.5 * static_cast<double>(i) + 0.25)));
  }
  const auto out = Process(quarter);
  EXPECT_LT(TruePeakOf({out.begin() + 1000, out.end()}), 0.05);
}

TEST_F(LimiterOf, HoldsHotMastersWhateverTheBlocks) {
  for (const auto& [name, samples] : HotMasters(kRate)) {
    ASSERT_GT(TruePeakOf(samples), 2) << name;
    limiter.Reset();
    const auto out = Process(samples, 77);
    EXPECT_LT(TruePeakOf(out), 0.7) << name;
    limiter.Reset();
    EXPECT_EQ(Process(samples, 128), out) << name;
  }
}

TEST(LimiterCeiling, IsKeptBetweenTheSamplesToo) {
  Limiter limiter(kRate, 0.891F);
  std::vector<float> out;
  for (int block = 0; block < 100; ++block) {
    std::array<float, 200> stereo;
    for (std::size_t i = 0; i < stereo.size(); ++i) stereo[i] = i / 2 % 4 < 2 ? 0.95F : -0.95F;
    limiter.Process(stereo);
    for (std::size_t i = 0; i < stereo.size(); i += 2) out.push_back(stereo[i]);
  }
  EXPECT_NEAR(TruePeakOf({out.begin() + 500, out.end()}), -1, 0.05);
  EXPECT_NEAR(limiter.TakeLowest(), 0.891 / (0.95 * std::numbers::sqrt2), 0.01);
  EXPECT_EQ(limiter.TakeLowest(), 1) << "asked twice";
}

TEST_F(LimiterOf, TurnsDownAndUpWithoutAStep) {
  std::vector<float> in = Tone(0.5F, 30'000);
  for (std::size_t i = 10'000; i < 20'000; ++i) in[i] = 3 * in[i];
  const auto out = Process(in);
  const float own = 3 * 0.5F * 0.02F * 0.02F;
  // Where the level itself jumps in the source there is a step, so look elsewhere.
  EXPECT_LT(Roughness({out.begin() + 10'200, out.begin() + 19'900}), 3 * own);
}

TEST_F(LimiterOf, LetsGoSlowly) {
  std::vector<float> in(kRate, 0.5F);
  in[1000] = 4;
  const auto out = Process(in);
  EXPECT_LT(out[1000 + late + kRate / 100], 0.3F);
  EXPECT_GT(out[1000 + late + kRate / 2], 0.49F);
}

TEST_F(LimiterOf, IsExactAgainAfterItLetGo) {
  std::vector<float> in = Tone(0.5F, 120'000);
  in[1000] = 4;
  const auto out = Process(in);
  for (std::size_t i = 110'000; i < in.size(); ++i) ASSERT_EQ(out[i], in[i - late]);
}

/// A card whose rear pair is the head-phones.
class OneCard : public ::testing::Test {
 protected:
  OneCard() {
    stage.files.Add("hall.mp3", ToneFile(5 * kRate, 100, 0.5));
    stage.files.Add("cue.mp3", ToneFile(5 * kRate, 100, 0.9));
  }
  float Loudest(std::size_t channel) {
    const auto samples = stage.Channel("card", channel, 8);
    return std::abs(*std::max_element(samples.begin(), samples.end()));
  }
  SoundStage stage{{EightChannelOutput("card")}};
};

TEST_F(OneCard, ALoudCueTurnsNothingDownInTheHall) {
  const auto hall = stage.Load("hall.mp3", 1, decks::kSpeakerFront);
  const auto cue = stage.Load("cue.mp3", 1, decks::kSpeakerRear);
  stage.engine->BASS_ChannelPlay(hall, false);
  stage.Advance(500ms);
  const auto alone = stage.Channel("card", 0, 8);
  stage.engine->SetGain(cue, {6});
  stage.engine->BASS_ChannelPlay(cue, false);
  stage.Advance(1s);
  EXPECT_NEAR(Loudest(2), 1, 0.01) << "the cue itself is limited";
  EXPECT_NEAR(stage.engine->LimiterReduction(1, decks::kSpeakerRear).value, 5.1, 0.2);
  EXPECT_EQ(stage.engine->LimiterReduction(1, decks::kSpeakerFront).value, 0);
  const auto both = stage.Channel("card", 0, 8);
  const std::size_t period = kRate / 100;
  for (std::size_t i = alone.size() - period; i < both.size(); ++i) {
    ASSERT_NEAR(both[i], both[i - period], 1e-3) << i;
  }
}

TEST_F(OneCard, OnAllItsSpeakersIsLimitedPairByPair) {
  stage.engine->BASS_ChannelPlay(stage.Load("hall.mp3", 1, decks::kSpeakerFront), false);
  const auto everywhere = stage.Load("cue.mp3", 1);
  stage.engine->BASS_ChannelPlay(everywhere, false);
  stage.Advance(1s);
  EXPECT_NEAR(Loudest(0), 1, 0.01);
  EXPECT_NEAR(Loudest(2), 0.9, 0.01);
  EXPECT_GT(stage.engine->LimiterReduction(1, decks::kSpeakerFront).value, 2);
  EXPECT_EQ(stage.engine->LimiterReduction(1, decks::kSpeakerRear).value, 0);
}

TEST(Programme, TwoLoudStreamsAreLimitedTogether) {
  SoundStage stage;
  stage.files.Add("loud.mp3", ToneFile(5 * kRate, 100, 0.9));
  for (int i = 0; i < 2; ++i) stage.engine->BASS_ChannelPlay(stage.Load("loud.mp3"), false);
  stage.Advance(2s);
  const auto left = stage.Channel("main", 0);
  EXPECT_LE(*std::max_element(left.begin(), left.end()), 1);
  EXPECT_GT(*std::max_element(left.begin(), left.end()), 0.98F);
  EXPECT_LT(Roughness(left), 6 * ToneRoughness(100, 1));
}

}  // namespace
}  // namespace engine::testing
