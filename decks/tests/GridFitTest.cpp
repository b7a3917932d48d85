// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/GridFit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "music/BeatGrid.h"

namespace decks {
namespace {

using music::Seconds;

constexpr double kLength = 90;

/// The wave of strokes: each makes its band loud for a moment.
class Drums {
 public:
  /// every and from in beats.
  Drums& Hit(std::uint8_t music::WaveColumn::*band, double bpm, double every, double from, int level = 120) {
    for (double beat = from; beat * 60 / bpm < kLength - 1; beat += every) {
      const double at = (first_ + beat * 60 / bpm) * music::Wave::kColumnsASecond;
      for (int i = 0; i < 6; ++i) {
        auto& column = columns_[static_cast<std::size_t>(at) + static_cast<std::size_t>(i)];
        column.*band = static_cast<std::uint8_t>(std::max<int>(column.*band, level >> i));
      }
    }
    return *this;
  }
  [[nodiscard]] music::BeatGrid Fit(const std::vector<Seconds>& tracked) const {
    return FitGrid({tracked, {}, {}, {}}, music::Wave::Of(columns_), Seconds(kLength));
  }
  static constexpr double first_ = 0.21;

 private:
  std::vector<music::WaveColumn> columns_ =
      std::vector<music::WaveColumn>(static_cast<std::size_t>(kLength) * music::Wave::kColumnsASecond);
};

/// What a tracker makes of it: steps of 11.6 ms.
std::vector<Seconds> TrackedAt(double bpm) {
  std::vector<Seconds> beats;
  for (double at = Drums::first_; at < kLength; at += 60 / bpm) {
    beats.emplace_back(std::round(at / 0.0116) * 0.0116);
  }
  return beats;
}

constexpr auto kLow = &music::WaveColumn::low;
constexpr auto kMid = &music::WaveColumn::mid;
constexpr auto kHigh = &music::WaveColumn::high;

/// A kick on every beat, a snare on two and four, hats on the halves and more softly on the finest strokes.
Drums FourOnTheFloor(double bpm, double finest = 0.25) {
  return Drums()
      .Hit(kLow, bpm, 1, 0)
      .Hit(kMid, bpm, 2, 1)
      .Hit(kHigh, bpm, 0.5, 0)
      .Hit(kHigh, bpm, finest, 0, 70);
}

TEST(GridFit, ATempoIsExactToAFiftiethOfABeatAMinuteAndTheBeatsLieOnTheDrums) {
  for (const double bpm : {92.5, 100.01, 120.37, 128.0, 139.99, 155.25}) {
    const auto grid = FourOnTheFloor(bpm).Fit(TrackedAt(bpm));
    EXPECT_NEAR(grid.Nominal().value, bpm, 0.02);
    EXPECT_GT(grid.Confidence(), 0.8);
    for (const double beat : {0.0, 40.0, 120.0}) {
      const Seconds at(Drums::first_ + beat * 60 / bpm);
      EXPECT_NEAR((grid.NearestBeat(at) - at).count(), 0, 0.012) << bpm;
    }
  }
}

TEST(GridFit, TheTrackersLevelOfTheMetreIsCorrected) {
  struct Case {
    double bpm, tracked, finest = 0.25;
  };
  for (const Case& c : {Case{174, 87, 0.5}, Case{165, 82.5, 0.5}, Case{82, 164}, Case{140, 93.333},
                        Case{140, 280}, Case{96, 48}, Case{120, 160}}) {
    EXPECT_NEAR(FourOnTheFloor(c.bpm, c.finest).Fit(TrackedAt(c.tracked)).Nominal().value, c.bpm, 0.05)
        << c.tracked;
  }
}

TEST(GridFit, ATempoThatWandersKeepsTheBeatsAsTheyWereTracked) {
  Drums drums;
  std::vector<Seconds> beats;
  double at = 0.5;
  for (int i = 0; at < kLength - 1; ++i, at += 0.5 + 0.05 * std::sin(i / 25.0)) {
    beats.emplace_back(at);
    drums.Hit(kLow, 60 / 0.5, 1e9, (at - Drums::first_) / 0.5);
  }
  EXPECT_EQ(drums.Fit(beats).Beats(), beats);
}

TEST(GridFit, WithoutBeatsThereIsNoGrid) {
  EXPECT_TRUE(Drums().Fit({}).Empty());
  EXPECT_TRUE(Drums().Fit({Seconds(1), Seconds(1.5)}).Empty());
  EXPECT_LT(Drums().Fit(TrackedAt(120)).Confidence(), 0.1) << "nothing sounds";
}

}  // namespace
}  // namespace decks
