// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/TempoSongs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace bench {
namespace {

constexpr double kRate = 44100;

/// Power of the deep half of the sound (a one-pole low pass) in the 60 ms from a time on.
double DeepPower(const TempoSong& song, double at) {
  const auto begin = static_cast<std::size_t>(at * kRate),
             end = begin + static_cast<std::size_t>(0.06 * kRate);
  double low = 0, sum = 0;
  for (std::size_t n = begin; n < end && 2 * n + 1 < song.samples.size(); ++n) {
    low += 0.02 * (song.samples[2 * n] - low);
    sum += low * low;
  }
  return sum;
}

TEST(TempoSong, IsTheSameForTheSameSeedAndAnotherForTheNext) {
  const TempoSong song = MakeTempoSong(5), again = MakeTempoSong(5), other = MakeTempoSong(14);
  EXPECT_EQ(song.samples, again.samples);
  EXPECT_EQ(song.beats, again.beats);
  EXPECT_EQ(song.style, other.style);
  EXPECT_NE(song.bpm, other.bpm);
}

TEST(TempoSong, OfEveryStyleKeepsItsMeasure) {
  std::set<std::string> styles;
  for (std::uint64_t seed = 0; seed < 9; ++seed) {
    const TempoSong song = MakeTempoSong(seed);
    styles.insert(song.style);
    const double seconds = static_cast<double>(song.samples.size()) / 2 / kRate;
    EXPECT_TRUE(seconds >= 59.9 && seconds <= 120) << song.style << " " << seconds;
    EXPECT_TRUE(song.bpm >= 80 && song.bpm <= 180) << song.style << " " << song.bpm;
    const double mean =
        60 * static_cast<double>(song.beats.size() - 1) / (song.beats.back() - song.beats.front());
    EXPECT_NEAR(mean, song.bpm, 0.05) << song.style;
    for (std::size_t i = 1; i < song.beats.size(); ++i)
      ASSERT_NEAR(song.beats[i] - song.beats[i - 1], 60 / song.bpm, 0.006) << song.style;
  }
  EXPECT_EQ(styles.size(), 9U);
}

TEST(TempoSong, OfHouseHasItsBassDrumOnTheBeats) {
  const TempoSong song = MakeTempoSong(0);
  ASSERT_EQ(song.style, "house");
  double on = 0, between = 0;
  for (std::size_t i = 0; i + 1 < song.beats.size(); ++i) {
    on += DeepPower(song, song.beats[i]);
    between += DeepPower(song, (song.beats[i] + song.beats[i + 1]) / 2);
  }
  EXPECT_GT(on, 2 * between);
}

}  // namespace
}  // namespace bench
