// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/Wave.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace music {
namespace {

constexpr int kRate = 44100;

/// A tone on both channels, full scale is 1.
std::vector<std::int16_t> Tone(double hertz, double level, double seconds) {
  std::vector<std::int16_t> samples;
  for (int i = 0; i < static_cast<int>(seconds * kRate); ++i) {
    const double value = level * std::sin(2 * std::numbers::pi * hertz * i / kRate);
    samples.insert(samples.end(), 2, static_cast<std::int16_t>(std::lround(value * 32767)));
  }
  return samples;
}

Wave WaveOf(std::span<const std::int16_t> samples, std::size_t piece = 1 << 20) {
  WaveBuilder builder(kRate, 2);
  for (; !samples.empty(); samples = samples.subspan(std::min(piece, samples.size()))) {
    builder.Add(samples.first(std::min(piece, samples.size())));
  }
  return builder.Finish();
}

TEST(WaveTest, ATrackGetsAHundredAndFiftyColumnsASecondAndACoarseWhole) {
  const Wave wave = WaveOf(Tone(440, 0.5, 20));
  EXPECT_EQ(wave.fine.size(), 3000U);
  EXPECT_EQ(wave.overview.size(), 1500U);
}

TEST(WaveTest, ColumnsShowTheExtremesOfTheirOwnTimeAlone) {
  std::vector<std::int16_t> samples(2 * kRate, 0);
  samples[2 * 22050] = 32767;       // at 0.5 s, left
  samples[2 * 22050 + 1] = -16384;  // right
  const Wave wave = WaveOf(samples);
  EXPECT_EQ(wave.fine[75].highest, 127);
  EXPECT_EQ(wave.fine[75].lowest, -63);
  EXPECT_EQ(wave.fine[74].highest + wave.fine[76].highest, 0);
  EXPECT_EQ(wave.overview[75], wave.fine[75]);
}

TEST(WaveTest, EachBandShowsItsTones) {
  const WaveColumn bass = WaveOf(Tone(50, 0.5, 1)).fine[100];
  const WaveColumn voice = WaveOf(Tone(800, 0.5, 1)).fine[100];
  const WaveColumn hiss = WaveOf(Tone(12000, 0.5, 1)).fine[100];
  EXPECT_GT(bass.low, 2 * bass.mid);
  EXPECT_GT(voice.mid, 2 * voice.low);
  EXPECT_GT(voice.mid, voice.high);
  EXPECT_GT(hiss.high, 2 * hiss.mid);
}

TEST(WaveTest, TheSizeOfThePiecesDoesNotMatter) {
  const auto samples = Tone(440, 0.7, 2);
  EXPECT_EQ(WaveOf(samples).fine, WaveOf(samples, 2 * 77).fine);
}

TEST(WaveTest, ThreeHoursEndAtTheirLastColumn) {
  WaveBuilder builder(kRate, 1);
  const std::vector<std::int16_t> second(kRate, 100);
  for (int i = 0; i < 3 * 3600; ++i) builder.Add(second);
  EXPECT_EQ(builder.Finish().fine.size(), 3U * 3600 * 150);
}

TEST(WaveTest, ATrackOfNothingIsAnEmptyWave) {
  const Wave wave = WaveOf({});
  EXPECT_TRUE(wave.fine.empty());
  EXPECT_TRUE(wave.overview.empty());
}

TEST(WaveTest, TheLowestRateStillMovesOn) {
  WaveBuilder builder(100, 1);
  builder.Add(std::vector<std::int16_t>(50, 1));
  EXPECT_EQ(builder.Finish().fine.size(), 50U);
}

}  // namespace
}  // namespace music
