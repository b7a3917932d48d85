// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Limiter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

class LimiterOf : public ::testing::Test {
 protected:
  std::vector<float> Process(std::vector<float> mono, std::size_t block = 100) {
    for (std::size_t i = 0; i < mono.size(); i += block) {
      limiter.Process(std::span(mono).subspan(i, std::min(block, mono.size() - i)), 1);
    }
    return mono;
  }
  static std::vector<float> Tone(float level, std::size_t frames) {
    std::vector<float> tone(frames);
    for (std::size_t i = 0; i < frames; ++i) tone[i] = level * std::sin(0.02F * static_cast<float>(i));
    return tone;
  }

  Limiter limiter{kRate, 2};
  const std::size_t late = static_cast<std::size_t>(limiter.LookAhead());
};

TEST_F(LimiterOf, LooksAheadNoMoreThanOneAndAHalfMilliseconds) {
  EXPECT_LE(limiter.LookAhead(), kRate * 15 / 10'000);
}

TEST_F(LimiterOf, LeavesWhatFitsBitForBit) {
  std::mt19937 random(1);
  std::uniform_real_distribution<float> samples(-1, 1);
  std::vector<float> in(20'000);
  for (float& sample : in) sample = samples(random);
  in[5000] = 1;
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
