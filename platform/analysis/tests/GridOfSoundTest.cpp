// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <random>

#include "decks/GridFit.h"
#include "music/MonoFeed.h"
#include "platform/analysis/QmBeatTrackers.h"

namespace platform::analysis {
namespace {

constexpr int kRate = 44100;

/// What the analysis makes of a sound of forty seconds, given by its value at each time.
music::BeatGrid GridOf(const std::function<double(double seconds)>& sound) {
  constexpr int kSeconds = 40;
  std::vector<std::int16_t> samples;
  for (int i = 0; i < kSeconds * kRate; ++i) {
    samples.push_back(
        static_cast<std::int16_t>(std::lround(20'000 * std::clamp(sound(double(i) / kRate), -1.0, 1.0))));
  }
  music::MonoFeed feed(kRate, 1);
  const auto tracker = QmBeatTrackers().Make(feed.OutputRate());
  tracker->Add(feed.Take(samples));
  music::WaveBuilder wave(kRate, 1);
  wave.Add(samples);
  return decks::FitGrid(tracker->Finish(), wave.Finish(), music::Seconds(kSeconds));
}

double Tone(double hertz, double seconds) {
  return std::sin(2 * std::numbers::pi * hertz * seconds);
}

TEST(GridOfSound, WhatHasNoBeatsGetsNone) {
  std::mt19937 dice(7);
  std::normal_distribution<double> normal;
  double low = 0, until = 0, level = 0, voice = 0;
  const auto noise = [&](double) { return 0.2 * normal(dice); };
  const auto wind = [&](double at) {
    return (2 + Tone(0.14, at)) * (low = 0.97 * low + 0.03 * normal(dice));
  };
  const auto speech = [&](double at) {
    std::uniform_real_distribution<double> even(0, 1);
    if (at >= until) {
      const bool pause = even(dice) < 0.18;
      until = at + (pause ? 0.1 + 0.6 * even(dice) : 0.09 + 0.2 * even(dice));
      level = pause ? 0 : 0.4 + 0.6 * even(dice);
    }
    voice += 0.002 * (level - voice);
    return voice * (0.5 * Tone(140, at) + 0.3 * Tone(700, at) + 0.1 * normal(dice));
  };
  const struct {
    const char* what;
    std::function<double(double)> sound;
  } cases[] = {{"silence", [](double) { return 0.0; }},
               {"a low tone", [](double at) { return Tone(60, at); }},
               {"a tone", [](double at) { return Tone(440, at); }},
               {"a high tone", [](double at) { return Tone(3000, at); }},
               {"two tones that beat", [](double at) { return (Tone(440, at) + Tone(440.7, at)) / 2; }},
               {"a slow swell", [](double at) { return 0.4 * (1 + Tone(0.2, at)) / 2 * Tone(220, at); }},
               {"noise", noise},
               {"wind", wind},
               {"speech", speech}};
  for (const auto& one : cases) {
    const music::BeatGrid grid = GridOf(one.sound);
    EXPECT_TRUE(grid.Empty()) << one.what << ": " << grid.Nominal().value;
  }
}

TEST(GridOfSound, AClickKeepsItsTempoAlsoInNoise) {
  std::mt19937 dice(7);
  std::normal_distribution<double> normal;
  for (const double bpm : {97.5, 120.0, 174.0}) {
    for (const double noise : {0.0, 0.02}) {
      const auto grid = GridOf([&](double at) {
        const double since = std::fmod(at, 60 / bpm);
        return 0.6 * std::exp(-80 * since) * Tone(200, since) + noise * normal(dice);
      });
      EXPECT_NEAR(grid.Nominal().value, bpm, 0.05) << noise;
    }
  }
}

}  // namespace
}  // namespace platform::analysis
