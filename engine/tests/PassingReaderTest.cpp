// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PassingReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include "engine/CaptureRing.h"
#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

/// A microphone and an output, each with blocks and a crystal of its own.
struct TwoClocks {
  int in_rate = 48000;
  double in_ppm = 0;
  int in_block = 240;
  int out_block = 220;
  double late = 0;  ///< seconds by which every third block of the microphone comes late
  double hertz = 500;

  /// What the output reads in that time, and how far behind at most after the first ten seconds.
  std::vector<float> Read(double seconds) {
    auto ring = std::make_unique<CaptureRing>();
    PassingReader reader(kRate);
    std::vector<float> out, block(static_cast<std::size_t>(out_block));
    const double true_rate = in_rate * (1 + in_ppm * 1e-6);
    std::int64_t written = 0;
    int blocks = 0;
    ring->Begin(in_rate);
    while (static_cast<double>(out.size()) < seconds * kRate) {
      const double now = static_cast<double>(out.size()) / kRate;
      while (true) {
        const double due = static_cast<double>(written + in_block) / true_rate + (blocks % 3 == 2 ? late : 0);
        if (due > now) break;
        std::vector<float> fresh(static_cast<std::size_t>(in_block));
        for (float& sample : fresh) {
          const double at = static_cast<double>(written++) / true_rate;
          sample = static_cast<float>(0.5 * std::sin(2 * std::numbers::pi * hertz * at));
        }
        ring->Write(fresh, At(due));
        ++blocks;
      }
      reader.Begin(*ring, At(now), out_block);
      reader.Read(*ring, block);
      out.insert(out.end(), block.begin(), block.end());
      if (now > 10) {
        most_delay = std::max(most_delay, reader.Delay());
        least_delay = std::min(least_delay, reader.Delay());
      }
    }
    gaps = reader.Gaps();
    return out;
  }
  static support::TimePoint At(double seconds) {
    return support::TimePoint(
        std::chrono::duration_cast<support::Duration>(std::chrono::duration<double>(seconds)));
  }

  double most_delay = 0;
  double least_delay = 1;
  std::uint64_t gaps = 0;
};

double LevelFrom(const std::vector<float>& samples, std::size_t from) {
  double sum = 0;
  for (std::size_t i = from; i < samples.size(); ++i) {
    sum += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
  }
  return std::sqrt(2 * sum / static_cast<double>(samples.size() - from));
}

TEST(PassingReaderOf, PassesAToneFromEveryRate) {
  for (const int rate : {8000, 11'025, 16'000, 32'000, 44'100, 48'000, 96'000, 192'000}) {
    TwoClocks clocks{.in_rate = rate, .in_block = rate / 200};
    const auto out = clocks.Read(2);
    EXPECT_NEAR(LevelFrom(out, kRate), 0.5, 0.005) << rate;
    EXPECT_EQ(clocks.gaps, 0U) << rate;
    EXPECT_LT(Roughness({out.begin() + kRate, out.end()}), 1.05F * ToneRoughness(500, 0.5)) << rate;
  }
}

TEST(PassingReaderOf, LeavesOutWhatTheOutputCannotHold) {
  TwoClocks clocks{.in_rate = 192'000, .in_block = 960, .hertz = 30'000};
  EXPECT_LT(LevelFrom(clocks.Read(2), kRate), 0.5e-3);
}

TEST(PassingReaderOf, StaysAsCloseBehindAsTheBlocksAllowWhateverTheCrystals) {
  for (const double ppm : {0.0, 200.0, -500.0}) {
    TwoClocks clocks{.in_ppm = ppm};
    const auto out = clocks.Read(40);
    // 5 ms of the microphone, 5 ms of the output, 1.5 ms for late callbacks.
    EXPECT_LT(clocks.most_delay, 0.0125) << ppm;
    EXPECT_GT(clocks.least_delay, 0.0105) << ppm;
    EXPECT_EQ(clocks.gaps, 0U) << ppm;
    EXPECT_LT(Roughness({out.begin() + kRate, out.end()}), 1.05F * ToneRoughness(500, 0.5)) << ppm;
  }
}

TEST(PassingReaderOf, StandsBackFurtherWhereBlocksComeLate) {
  TwoClocks clocks{.late = 0.004};
  const auto out = clocks.Read(20);
  EXPECT_LE(clocks.gaps, 2U);
  EXPECT_LT(clocks.most_delay, 0.018);
  const auto settled = std::vector<float>(out.begin() + 5 * kRate, out.end());
  EXPECT_LT(Roughness(settled), 1.05F * ToneRoughness(500, 0.5));
}

TEST(PassingReaderOf, ABreakDiesAwayAndComesInAgainWithoutAClick) {
  TwoClocks clocks{.late = 0.02};  // longer than what it keeps back at first
  const auto out = clocks.Read(10);
  EXPECT_GE(clocks.gaps, 1U);
  EXPECT_LE(clocks.gaps, 8U);
  for (std::size_t i = 1; i < out.size(); ++i) ASSERT_LT(std::abs(out[i] - out[i - 1]), 0.06F) << i;
}

}  // namespace
}  // namespace engine::testing
