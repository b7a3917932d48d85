// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/VoiceChain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

#include "engine/Ducker.h"
#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

constexpr std::size_t kSecond = kRate;

double InDb(double level) {
  return 20 * std::log10(std::max(level, 1e-9));
}

double Peak(const std::vector<float>& samples, std::size_t from, std::size_t to) {
  double peak = 0;
  for (std::size_t i = from; i < to; ++i) peak = std::max(peak, std::abs(static_cast<double>(samples[i])));
  return peak;
}

std::vector<float> Sine(double hertz, double level, std::size_t frames) {
  std::vector<float> tone(frames);
  for (std::size_t i = 0; i < frames; ++i) {
    tone[i] =
        static_cast<float>(level * std::sin(2 * std::numbers::pi * hertz * static_cast<double>(i) / kRate));
  }
  return tone;
}

std::vector<float> Noise(double decibels, std::size_t frames) {
  std::mt19937 random(7);
  std::normal_distribution<float> samples(0, static_cast<float>(std::pow(10, decibels / 20)));
  std::vector<float> noise(frames);
  for (float& sample : noise) sample = samples(random);
  return noise;
}

class VoiceOf : public ::testing::Test {
 protected:
  VoiceOf() {
    settings.gate = decks::GateMode::Off;
    settings.low_cut = 0;
    settings.compress = false;
  }
  /// Behind all that is set, from the beginning.
  std::vector<float> Process(std::vector<float> mono) {
    chain.Set(ShapeOf(settings, kRate));
    chain.Reset();
    return GoOn(std::move(mono));
  }
  std::vector<float> GoOn(std::vector<float> mono) {
    for (std::size_t i = 0; i < mono.size(); i += 100) {
      chain.Process(std::span(mono).subspan(i, std::min<std::size_t>(100, mono.size() - i)));
    }
    return mono;
  }
  /// dB that a tone gains on the way.
  double Gain(double hertz, double decibels = -20) {
    const double level = std::pow(10, decibels / 20);
    return InDb(Peak(Process(Sine(hertz, level, kSecond)), kSecond / 2, kSecond) / level);
  }

  decks::VoiceSettings settings;
  VoiceChain chain{kRate};
};

TEST_F(VoiceOf, PassesAsItCameWhereNothingIsSet) {
  for (const double hertz : {40.0, 300.0, 1200.0, 9000.0}) EXPECT_NEAR(Gain(hertz), 0, 0.01) << hertz;
}

TEST_F(VoiceOf, LosesItsRumbleAndBendsInThreeBands) {
  settings.low_cut = 100;
  settings.bass = 6;
  settings.middle = -6;
  settings.treble = 3;
  EXPECT_LT(Gain(20), -20);
  EXPECT_NEAR(Gain(1200), -6, 0.3);
  EXPECT_NEAR(Gain(15'000), 3, 0.3);
  settings.low_cut = 0;
  EXPECT_NEAR(Gain(40), 6, 0.3);
}

TEST_F(VoiceOf, IsCompressedByTheCurve) {
  settings.compress = true;
  settings.makeup = 6;
  struct Case {
    double level, gain;
  };
  // 4:1 above -20 dB; the detector takes crests, which are rarer in a sine than its release is long.
  for (const auto& [level, gain] : {Case{-40, 6}, Case{-24, 6}, Case{-8, -3}, Case{-4, -6}}) {
    EXPECT_NEAR(Gain(500, level), gain, 0.4) << level;
    EXPECT_NEAR(chain.Reduction(), 6 - gain, 0.4) << level;
  }
}

TEST_F(VoiceOf, ARoomWithoutAVoiceIsShutOut) {
  settings.gate = decks::GateMode::Automatic;
  for (const double noise : {-70.0, -55.0, -46.0}) {
    const auto out = Process(Noise(noise, 4 * kSecond));
    EXPECT_LT(InDb(Peak(out, 2 * kSecond, 4 * kSecond)), -100) << noise;
    EXPECT_FALSE(chain.Speaks());
  }
}

TEST_F(VoiceOf, AVoicePassesFromItsFirstSyllableAndTheRoomClosesBehindIt) {
  settings.gate = decks::GateMode::Automatic;
  for (const std::size_t silence : {std::size_t{0}, 2 * kSecond}) {
    std::vector<float> sound = Noise(-50, silence + 4 * kSecond);
    const auto voice = Sine(200, 0.2, kSecond);
    for (std::size_t i = 0; i < voice.size(); ++i) sound[silence + i] += voice[i];
    const auto out = Process(sound);
    EXPECT_GT(Peak(out, silence, silence + kSecond / 50), 0.15) << silence;
    EXPECT_GT(Peak(out, silence + kSecond * 9 / 10, silence + kSecond), 0.19) << silence;
    // Hold and release, and the room learnt from its pauses.
    EXPECT_LT(InDb(Peak(out, silence + 2 * kSecond, out.size())), -100) << silence;
  }
}

TEST_F(VoiceOf, AFixedGateKeepsToItsTwoLevels) {
  settings.gate = decks::GateMode::Fixed;
  settings.gate_level = -30;
  const double below = std::pow(10, -33.0 / 20) * std::numbers::sqrt2;  // between the levels
  auto out = Process(Sine(300, below, kSecond));
  EXPECT_EQ(Peak(out, 0, kSecond), 0);
  out = GoOn(Sine(300, 2 * below, kSecond / 10));
  EXPECT_TRUE(chain.Speaks());
  out = GoOn(Sine(300, below, kSecond));
  EXPECT_GT(Peak(out, kSecond / 2, kSecond), 0.9 * below) << "it stays open above the lower level";
  out = GoOn(Sine(300, below / 4, kSecond));
  EXPECT_EQ(Peak(out, kSecond * 9 / 10, kSecond), 0);
}

TEST_F(VoiceOf, ChangesWithoutAClick) {
  const auto tone = Sine(300, 0.3, kSecond);
  const float smooth = Roughness(Process(tone));
  settings.gain = 6;
  settings.bass = 9;
  settings.treble = -9;
  settings.low_cut = 120;
  settings.compress = true;
  chain.Set(ShapeOf(settings, kRate));
  EXPECT_LT(Roughness(GoOn(tone)), 8 * smooth);  // a step to the new gain would be 200 times as rough
}

TEST_F(VoiceOf, NumbersThatAreNoneDoNoHarm) {
  const float none = std::numeric_limits<float>::quiet_NaN();
  settings = {none, none, decks::GateMode::Fixed, none, none, none, none, true, none, none, none};
  for (const float sample : Process(Sine(300, 0.5, kSecond))) ASSERT_TRUE(std::isfinite(sample));
}

/// The gains from the first frame on, in pieces.
std::vector<float> DuckGains(Ducker& ducker, std::size_t frames) {
  std::vector<float> all;
  while (all.size() < frames) {
    std::vector<float> piece(std::min<std::size_t>(128, frames - all.size()), 1.0F);
    ducker.Render(piece);
    all.insert(all.end(), piece.begin(), piece.end());
  }
  return all;
}

TEST(DuckerOf, GoesDownInItsTimeAndComesBackToExactlyOne) {
  Ducker ducker(kRate);
  ducker.Set({.depth = 12, .attack = 0.05F, .hold = 0.4F, .release = 0.6F});
  ducker.Speaking(true);
  auto gains = DuckGains(ducker, kSecond);
  EXPECT_NEAR(InDb(gains[kSecond / 40]), -6, 0.1) << "half the way after half the time";
  EXPECT_NEAR(InDb(gains[kSecond / 20]), -12, 0.01);
  EXPECT_EQ(gains.back(), gains[kSecond / 20 + 10]);
  ducker.Speaking(false);
  gains = DuckGains(ducker, 2 * kSecond);
  EXPECT_NEAR(InDb(gains[kSecond * 39 / 100]), -12, 0.01) << "held";
  EXPECT_NEAR(InDb(gains[kSecond * 7 / 10]), -6, 0.1);
  EXPECT_EQ(gains[kSecond * 101 / 100], 1.0F);
  EXPECT_TRUE(ducker.Rests());
  std::vector<float> untouched(10, 7.0F);
  EXPECT_FALSE(ducker.Render(untouched));
  EXPECT_EQ(untouched.front(), 7.0F);
}

TEST(DuckerOf, FollowsAKnobWithoutAStep) {
  Ducker ducker(kRate);
  ducker.Speaking(true);
  auto all = DuckGains(ducker, kSecond);
  for (const float depth : {30.0F, 3.0F, 0.0F, 12.0F}) {
    ducker.Set({.depth = depth});
    const auto more = DuckGains(ducker, kSecond);
    EXPECT_NEAR(InDb(more.back()), -depth, 0.01);
    all.insert(all.end(), more.begin(), more.end());
  }
  for (std::size_t i = 1; i < all.size(); ++i) ASSERT_LT(std::abs(all[i] - all[i - 1]), 0.002F) << i;
}

}  // namespace
}  // namespace engine::testing
