// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/TruePeak.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "music/MonoFeed.h"

namespace music {
namespace {

/// A sine of a share of the sample rate, so many samples on each channel; the first one is silent when there
/// are more.
std::vector<std::int16_t> Sine(double share, double phase, double level, int channels, int frames) {
  std::vector<std::int16_t> samples;
  for (int i = 0; i < frames; ++i) {
    const double value = level * std::sin(2 * std::numbers::pi * share * i + phase);
    for (int c = 0; c < channels; ++c) {
      const bool silent = channels > 1 && c == 0;
      samples.push_back(silent ? std::int16_t{0} : static_cast<std::int16_t>(std::lround(value * 32767)));
    }
  }
  return samples;
}

float PeakOf(const std::vector<std::int16_t>& samples, int rate, int channels) {
  TruePeak peak(rate, channels);
  peak.Add(samples);
  return peak.Finish().value;
}

TEST(TruePeak, FindsThePeaksBetweenTheSamples) {
  struct Case {
    double share, phase;  // a quarter of the rate, sampled 45 degrees off, shows 3 dB less than it has
    int rate, channels;
    double expected, tolerance;
  };
  for (const Case& c : {Case{0.25, std::numbers::pi / 4, 44100, 1, -6.02, 0.1},
                        Case{0.25, std::numbers::pi / 4, 44100, 6, -6.02, 0.1},
                        Case{0.25, std::numbers::pi / 4, 96000, 2, -6.02, 0.1},
                        Case{0.25, std::numbers::pi / 4, 192000, 2, -9.03, 0.05},
                        Case{0.02, 0, 44100, 2, -6.02, 0.05}, Case{1.0 / 6, 1.0 / 6, 48000, 2, -6.02, 0.3}}) {
    EXPECT_NEAR(PeakOf(Sine(c.share, c.phase, 0.5, c.channels, 5000), c.rate, c.channels), c.expected,
                c.tolerance)
        << c.share << ' ' << c.rate << ' ' << c.channels;
  }
  EXPECT_FLOAT_EQ(PeakOf(std::vector<std::int16_t>(999), 44100, 1), -120);
  EXPECT_NEAR(PeakOf({0, 0, -32768}, 44100, 1), 0, 0.01);
}

TEST(TruePeak, AQuietBlockThatIsPassedOverChangesNothing) {
  auto samples = Sine(0.25, 0.7, 0.01, 2, 3000);
  const auto loud = Sine(0.25, std::numbers::pi / 4, 0.5, 2, 3000);
  samples.insert(samples.end(), loud.begin(), loud.end());
  const auto quiet = Sine(0.25, 0.7, 0.01, 2, 3000);
  samples.insert(samples.end(), quiet.begin(), quiet.end());
  EXPECT_NEAR(PeakOf(samples, 44100, 2), -6.02, 0.5);
}

TEST(MonoFeed, KeepsTheLowTonesAndTheTime) {
  struct Case {
    int rate, channels;
    double output;
  };
  for (const Case& c :
       {Case{44100, 2, 22050}, Case{48000, 6, 24000}, Case{8000, 1, 8000}, Case{192000, 1, 24000}}) {
    std::vector<std::int16_t> samples(static_cast<std::size_t>(c.rate * c.channels));
    const int middle = c.rate / 2;
    for (int i = middle; i < c.rate; ++i) {
      for (int k = 0; k < c.channels; ++k) samples[static_cast<std::size_t>(i * c.channels + k)] = 16384;
    }
    MonoFeed feed(c.rate, c.channels);
    std::vector<float> out;
    const std::span<const std::int16_t> all(samples);
    const auto half = static_cast<std::size_t>(c.channels * 1001);
    for (const auto piece : {all.first(half), all.subspan(half)}) {
      const auto got = feed.Take(piece);
      out.insert(out.end(), got.begin(), got.end());
    }
    EXPECT_EQ(feed.OutputRate(), c.output);
    const auto at = [&](double seconds) { return out[static_cast<std::size_t>(seconds * c.output)]; };
    EXPECT_NEAR(at(0.49), 0, 0.01) << c.rate;
    EXPECT_NEAR(at(0.51), 0.5, 0.01) << c.rate;
  }
}

}  // namespace
}  // namespace music
