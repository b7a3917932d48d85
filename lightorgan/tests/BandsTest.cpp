// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/Bands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "lightorgan/OnsetDetector.h"
#include "lightorgan/testing/FakeMusic.h"

namespace lightorgan {
namespace {

using std::chrono::milliseconds;
using testing::Tone;

constexpr milliseconds kTick{20};

std::vector<float> Feed(BandFollower& follower, const Bins& bins, milliseconds time) {
  std::span<const float> levels;
  for (milliseconds at{0}; at < time; at += kTick) levels = follower.Follow(bins, kTick);
  return {levels.begin(), levels.end()};
}

/// Noise with the same power in every octave, as a transform of 256 samples shows it.
Bins PinkNoise(std::mt19937& random) {
  std::exponential_distribution<float> power(1);
  Bins bins{};
  for (std::size_t i = 1; i < bins.size(); ++i) {
    bins[i] = 0.1F * std::sqrt(power(random) / static_cast<float>(i));
  }
  return bins;
}

TEST(Bands, EdgesAreThoseOfTheOctaveLaw) {
  const auto eight = BandEdges(8);
  EXPECT_THAT(std::span(eight).first(9), ::testing::ElementsAre(1, 2, 3, 6, 11, 21, 38, 70, 128));
  EXPECT_THAT(BandEdges(16),
              ::testing::ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 11, 15, 21, 28, 38, 52, 70, 95, 128));
}

TEST(Bands, ASweepLightsTheBandsInOrder) {
  for (const int bands : {8, 16}) {
    BandFollower follower(bands);
    std::ptrdiff_t last = 0;
    for (int bin = 1; bin < 128; ++bin) {
      const auto levels = Feed(follower, Tone(bin), milliseconds(300));
      const auto loudest = std::max_element(levels.begin(), levels.end()) - levels.begin();
      EXPECT_GE(loudest, last) << "bin " << bin;
      EXPECT_LE(loudest, last + 1) << "bin " << bin;
      EXPECT_GT(levels[static_cast<std::size_t>(loudest)], 0.3F);
      last = loudest;
    }
    EXPECT_EQ(last, bands - 1);
  }
}

TEST(Bands, ASineLightsItsOwnBandAndAtMostTheOneBesideIt) {
  for (double bin = 1; bin < 126; bin += 0.37) {
    std::array<float, music::kSpectrumFrames> samples;
    for (std::size_t i = 0; i < samples.size(); ++i) {  // of 16 bits
      samples[i] = static_cast<float>(
          std::round(16'000 * std::sin(2 * std::numbers::pi * bin * double(i) / 256)) / 32'768);
    }
    BandFollower follower(8);
    const auto levels = Feed(follower, music::SpectrumOf(samples), milliseconds(300));
    std::vector<int> lit;
    for (int band = 0; band < 8; ++band) {
      if (levels[static_cast<std::size_t>(band)] > 0.55F) lit.push_back(band);
    }
    ASSERT_FALSE(lit.empty()) << bin;
    EXPECT_LE(lit.back() - lit.front(), bin < 4 ? 2 : 1) << "bin " << bin;
  }
}

TEST(Bands, PinkNoiseIsFlatWithinThreeDecibels) {
  for (const int bands : {8, 16}) {
    BandFollower follower(bands);
    std::mt19937 random(7);
    std::vector<double> sums(static_cast<std::size_t>(bands));
    for (int tick = 0; tick < 3'000; ++tick) {
      const auto levels = follower.Follow(PinkNoise(random), kTick);
      if (tick < 500) continue;
      for (std::size_t i = 0; i < sums.size(); ++i) sums[i] += levels[i];
    }
    const auto [quietest, loudest] = std::minmax_element(sums.begin(), sums.end());
    EXPECT_LT(20 * std::log10(*loudest / *quietest), 3) << bands;
  }
}

TEST(Bands, AQuieterSongComesBackWithinTheGainsTimeAndLoudnessDoesNotMatter) {
  BandFollower follower(8);
  std::mt19937 random(7);
  const auto mean = [&](float loudness, milliseconds time) {
    double sum = 0;
    int ticks = 0;
    for (milliseconds at{0}; at < time; at += kTick, ++ticks) {
      Bins bins = PinkNoise(random);
      for (float& bin : bins) bin *= loudness;
      for (const float level : follower.Follow(bins, kTick)) sum += level;
    }
    return sum / ticks;
  };
  mean(1, milliseconds(15'000));
  const double loud = mean(1, milliseconds(5'000));
  mean(0.1F, milliseconds(15'000));
  EXPECT_NEAR(mean(0.1F, milliseconds(5'000)), loud, 0.1 * loud);
}

TEST(Bands, SilenceAndNumbersThatAreNoneEndDark) {
  BandFollower follower(8);
  Feed(follower, Tone(1), milliseconds(500));
  for (const float level : Feed(follower, Tone(1, 0.0001F), milliseconds(1'200))) EXPECT_EQ(level, 0);
  Bins broken;
  broken.fill(std::numeric_limits<float>::quiet_NaN());
  broken[3] = std::numeric_limits<float>::infinity();
  for (const float level : Feed(follower, broken, milliseconds(100))) EXPECT_EQ(level, 0);
  EXPECT_GT(Feed(follower, Tone(1), milliseconds(500))[0], 0.9F);
}

TEST(Bands, ASwitchHasTwoThresholdsAndAShortestTime) {
  LevelSwitch lamp;
  EXPECT_FALSE(lamp.Update(0.5F, 0.6F, milliseconds(100)));
  EXPECT_TRUE(lamp.Update(0.7F, 0.6F, milliseconds(100)));
  EXPECT_TRUE(lamp.Update(0.41F, 0.6F, milliseconds(100)));
  EXPECT_FALSE(lamp.Update(0.39F, 0.6F, milliseconds(100)));
  EXPECT_FALSE(lamp.Update(1, 0.6F, milliseconds(40)));
  EXPECT_TRUE(lamp.Update(1, 0.6F, milliseconds(40)));
  EXPECT_FALSE(lamp.Update(0, 0, milliseconds(80)));
}

TEST(Onsets, AClickTrackGivesExactlyItsBeats) {
  OnsetDetector detector;
  std::mt19937 random(3);
  int onsets = 0;
  for (int tick = 0; tick < 3'000; ++tick) {
    Bins bins = PinkNoise(random);
    for (float& bin : bins) bin *= tick % 50 < 2 ? 1 : 0.01F;  // 120 a minute
    onsets += detector.Onset(bins, milliseconds(10)) ? 1 : 0;
  }
  EXPECT_EQ(onsets, 60);
}

TEST(Onsets, NoneInASteadyToneOrInNothing) {
  OnsetDetector detector;
  (void)detector.Onset(Tone(10), milliseconds(10));
  Bins broken;
  broken.fill(std::numeric_limits<float>::quiet_NaN());
  for (int tick = 0; tick < 500; ++tick) {
    EXPECT_FALSE(detector.Onset(tick < 250 ? Tone(10) : broken, milliseconds(10)));
  }
}

}  // namespace
}  // namespace lightorgan
