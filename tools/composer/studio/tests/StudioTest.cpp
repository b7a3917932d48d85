// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/composer/studio/Session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "tools/composer/studio/Effects.h"

namespace tools::composer {
namespace {

Stereo Sine(double frequency, double level, double seconds) {
  Stereo sound(static_cast<std::size_t>(seconds * kRate));
  for (std::size_t n = 0; n < sound.Frames(); ++n) {
    const double phase = 2 * std::numbers::pi * frequency * static_cast<double>(n) / kRate;
    sound.left[n] = sound.right[n] = static_cast<float>(level * std::sin(phase));
  }
  return sound;
}

float PeakOf(const Stereo& sound) {
  float peak = 0;
  for (std::size_t n = 0; n < sound.Frames(); ++n) {
    peak = std::max({peak, std::abs(sound.left[n]), std::abs(sound.right[n])});
  }
  return peak;
}

/// A bar of drums with a chord over it.
Session SmallSession() {
  Session session({120, 0}, 2, 7);
  session.Set(Strip::Drums, {1, 0.1, 0, 0});
  session.Set(Strip::Chords, {0.5, 0.3, 0.3, 0.5});
  for (const int step : Hits("x...x...x...x...")) session.BassDrum(0, step, 0.9);
  Patch patch{.saw = 1, .cutoff_hz = 2000};
  session.Chord(Strip::Chords, 0, 0, patch, {60, 64, 67}, session.Steps(16), 0.3);
  return session;
}

TEST(Loudness, OfAFullSineInBothChannelsIsZero) {
  EXPECT_NEAR(Loudness(Sine(997, 1, 5)), 0, 0.1);
  EXPECT_NEAR(Loudness(Sine(997, 0.1, 5)), -20, 0.1);
}

TEST(Loudness, CountsNoSilence) {
  Stereo half = Sine(997, 0.1, 5);
  half.left.resize(2 * half.left.size());
  half.right.resize(half.left.size());
  EXPECT_NEAR(Loudness(half), -20, 0.3);
}

TEST(Mastering, ReachesItsLoudnessBelowItsCeiling) {
  Session session = SmallSession();
  const Stereo sound = session.Mix({.lufs = -11});
  EXPECT_NEAR(Loudness(sound), -11, 0.5);
  EXPECT_LE(PeakOf(sound), 0.8F);
}

TEST(Mastering, StaysStraightWhereNothingIsTooLoud) {
  Stereo sine = Sine(440, 0.2, 3);
  const double before = Loudness(sine);
  Master(sine, before, 0.79);
  EXPECT_NEAR(PeakOf(sine), 0.2F, 0.005F);
}

TEST(Mix, BeginsAndEndsWithTrueSilence) {
  Session session = SmallSession();
  const Stereo sound = session.Mix({.head_seconds = 0.5, .tail_seconds = 0.7});
  const auto silent = [](float sample) { return sample == 0; };
  EXPECT_TRUE(std::all_of(sound.left.begin(), sound.left.begin() + kRate / 2, silent));
  EXPECT_TRUE(std::all_of(sound.right.end() - 7 * kRate / 10, sound.right.end(), silent));
}

TEST(Mix, IsTheSameEveryTime) {
  Session one = SmallSession(), two = SmallSession();
  EXPECT_EQ(one.Mix({}).left, two.Mix({}).left);
}

TEST(SessionTime, SwingMakesEverySecondSixteenthLate) {
  const Session straight({120, 0}, 1, 1), swung({120, 0.5}, 1, 1);
  EXPECT_EQ(straight.At(1, 0), 2U * kRate);
  EXPECT_EQ(swung.At(0, 2), straight.At(0, 2));
  EXPECT_NEAR(static_cast<double>(swung.At(0, 1) - straight.At(0, 1)), kRate / 16.0, 1);
}

TEST(Instruments, ANotePlaysItsPitchAndEnds) {
  Stereo sound(2 * kRate);
  Patch patch{.sine = 1};
  patch.amp = {0.01, 0.1, 1, 0.05};
  Play(sound, 0, patch, {69, 1, 0.5, 0});
  int crossings = 0;
  for (std::size_t n = kRate / 10; n < static_cast<std::size_t>(kRate) * 6 / 10; ++n) {
    crossings += sound.left[n - 1] < 0 && sound.left[n] >= 0;
  }
  EXPECT_NEAR(crossings, 220, 1);
  EXPECT_EQ(sound.left.back(), 0);
}

TEST(Instruments, NothingIsWrittenBehindTheEndOfTheSound) {
  Stereo sound(100);
  Random dice(3);
  Play(sound, 90, {.saw = 1}, {60, 1, 0.5, 0});
  Pluck(sound, 99, {60, 1, 0.5, 0}, 0.5, dice);
  Crash(sound, 500, 0.5, dice);
  EXPECT_EQ(sound.Frames(), 100U);
}

}  // namespace
}  // namespace tools::composer
