// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/BeatGrid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace music {
namespace {

BeatGrid At120() {
  return BeatGrid::Even({120}, 0.9, Seconds(10.25), Seconds(60));
}

BeatGrid Live() {
  return {{0}, 0.5, {Seconds(1), Seconds(1.5), Seconds(2.1), Seconds(2.6)}};
}

TEST(BeatGrid, EvenBeatsFillTheTrackThroughTheAnchor) {
  const BeatGrid grid = At120();
  EXPECT_DOUBLE_EQ(grid.Beats().front().count(), 0.25);
  EXPECT_DOUBLE_EQ(grid.Beats().back().count(), 59.75);
  EXPECT_EQ(grid.Beats().size(), 120U);
  EXPECT_DOUBLE_EQ(grid.TempoAt(Seconds(30)).value, 120);
}

TEST(BeatGrid, CountsBeatsWithTheirFractionAlsoBeyondTheEnds) {
  struct Case {
    double time, beat, phase, next, nearest;
  };
  for (const Case& c : {Case{1, 0, 0, 1.5, 1}, Case{1.25, 0.5, 0.5, 1.5, 1.5}, Case{1.8, 1.5, 0.5, 2.1, 2.1},
                        Case{0.5, -1, 0, 1, 0.5}, Case{0.4, -1.2, 0.8, 0.5, 0.5},
                        Case{2.85, 3.5, 0.5, 3.1, 3.1}, Case{2.2, 2.2, 0.2, 2.6, 2.1}}) {
    SCOPED_TRACE(c.time);
    EXPECT_NEAR(Live().BeatAt(Seconds(c.time)), c.beat, 1e-9);
    EXPECT_NEAR(Live().PhaseAt(Seconds(c.time)), c.phase, 1e-9);
    EXPECT_NEAR(Live().NextBeat(Seconds(c.time)).count(), c.next, 1e-9);
    EXPECT_NEAR(Live().NearestBeat(Seconds(c.time)).count(), c.nearest, 1e-9);
    EXPECT_NEAR(Live().TimeOf(c.beat).count(), c.time, 1e-9);
  }
}

TEST(BeatGrid, TheNextBeatFromABeatIsTheOneAfterIt) {
  const BeatGrid grid = BeatGrid::Even({127.3}, 1, Seconds(0.1), Seconds(600));
  Seconds time = grid.Beats().front();
  for (std::size_t i = 1; i < grid.Beats().size(); ++i) {
    time = grid.NextBeat(time);
    ASSERT_NEAR(time.count(), grid.Beats()[i].count(), 1e-6);
  }
}

TEST(BeatGrid, IsCorrectedByHand) {
  struct Case {
    BeatScale scale;
    double bpm;
    std::size_t beats;
  };
  for (const Case& c : {Case{BeatScale::Double, 240, 239}, Case{BeatScale::Half, 60, 60},
                        Case{BeatScale::TwoThirds, 80, 80}, Case{BeatScale::ThreeHalves, 180, 179}}) {
    const BeatGrid scaled = At120().ScaledBy(c.scale);
    EXPECT_DOUBLE_EQ(scaled.Nominal().value, c.bpm);
    EXPECT_NEAR(scaled.TempoAt(Seconds(20)).value, c.bpm, 1e-6);
    EXPECT_EQ(scaled.Beats().size(), c.beats);
    EXPECT_EQ(scaled.Beats().front(), At120().Beats().front());
  }
  EXPECT_DOUBLE_EQ(At120().ShiftedBy(Seconds(-0.3)).Beats().front().count(), -0.05);
}

TEST(BeatGrid, ATappedTempoGoesThroughTheBeatNearestToTheAnchor) {
  const BeatGrid tapped = At120().RetimedTo({121}, Seconds(30.3), Seconds(60));
  EXPECT_NEAR(tapped.PhaseAt(Seconds(30.25)), 0, 1e-9);
  EXPECT_DOUBLE_EQ(tapped.Nominal().value, 121);
  EXPECT_EQ(tapped.Confidence(), 1);
  EXPECT_DOUBLE_EQ(BeatGrid().RetimedTo({100}, Seconds(7), Seconds(60)).NearestBeat(Seconds(7.1)).count(), 7);
}

TEST(BeatGrid, NonsenseIsLeftOut) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const BeatGrid grid({kNan}, 7, {Seconds(1), Seconds(kNan), Seconds(0.5), Seconds(1.05), Seconds(2)});
  EXPECT_EQ(grid.Beats(), (std::vector<Seconds>{Seconds(1), Seconds(2)}));
  EXPECT_DOUBLE_EQ(grid.Nominal().value, 60);
  EXPECT_EQ(grid.Confidence(), 1);
  for (const BeatGrid& none :
       {BeatGrid({120}, 1, {Seconds(3)}), BeatGrid::Even({120}, 1, Seconds(kNan), Seconds(9)),
        BeatGrid::Even({120}, 1, Seconds(0), Seconds(1e9)), BeatGrid().ScaledBy(BeatScale::Half)}) {
    EXPECT_TRUE(none.Empty());
    EXPECT_EQ(none.Nominal().value, 0);
    EXPECT_EQ(none.NextBeat(Seconds(4)), Seconds(4));
    EXPECT_EQ(none.PhaseAt(Seconds(4)), 0);
  }
}

}  // namespace
}  // namespace music
