// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/BeatSync.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <random>

namespace decks {
namespace {

using music::BeatGrid;
using music::Seconds;

struct Pair {
  const char* name;
  double leader_bpm, follower_bpm;
  double leader_speed = 1;
  double ppm = 0;        ///< the follower's device runs so much faster
  double jitter_ms = 0;  ///< of what is read of either clock
  double starts_late = 0.2;
};

void PrintTo(const Pair& pair, std::ostream* out) {
  *out << pair.name;
}

/// Two decks on two devices: an order of the follower's tempo is heard 120 ms later.
class TwoDecks {
 public:
  explicit TwoDecks(const Pair& pair)
      : pair_(pair),
        led_(BeatGrid::Even({pair.leader_bpm}, 1, Seconds(0.1), Seconds(900))),
        own_(BeatGrid::Even({pair.follower_bpm}, 1, Seconds(0.3), Seconds(900))) {
    leader_.grid = &led_;
    leader_.speed = pair.leader_speed;
    leader_.playing = true;
    follower_.grid = &own_;
    follower_.playing = true;
    leader_at_ = Seconds(30.1);
    follower_at_ = own_.TimeOf(std::round(own_.BeatAt(Seconds(40)))) - Seconds(pair.starts_late);
  }

  bool Begin(double most_percent = 10) { return sync_.Begin(leader_, follower_, most_percent); }
  void Run(double seconds) {
    constexpr double kTick = 0.01;
    for (double done = 0; done < seconds; done += kTick) {
      orders_.push_back(follower_.speed);
      constexpr std::size_t kTicksLate = 12;
      const double heard = orders_.size() > kTicksLate ? orders_[orders_.size() - kTicksLate] : 1;
      leader_at_ += Seconds(kTick * leader_.speed);
      follower_at_ += Seconds(kTick * heard * (1 + pair_.ppm * 1e-6));
      Read(leader_, leader_at_);
      Read(follower_, follower_at_);
      const auto step = sync_.Next(leader_, follower_, Seconds(kTick));
      ASSERT_TRUE(step);
      largest_bend_ = std::max(largest_bend_, std::abs(step->bend - 1));
      follower_.speed = step->speed * step->bend;
    }
  }
  /// The true one, in ms.
  [[nodiscard]] double Error() {
    leader_.heard = leader_at_;
    follower_.heard = follower_at_;
    return sync_.Error(leader_, follower_).value_or(Seconds(9)).count() * 1000;
  }
  double largest_bend_ = 0;
  BeatSide leader_, follower_;
  BeatSync sync_;

 private:
  void Read(BeatSide& side, Seconds at) {
    std::normal_distribution<double> jitter(0, pair_.jitter_ms / 1000 + 1e-12);
    side.heard = at + Seconds(jitter(random_));
  }

  const Pair pair_;
  const BeatGrid led_, own_;
  Seconds leader_at_{0}, follower_at_{0};
  std::deque<double> orders_;
  std::mt19937 random_{7};
};

class BeatSyncTest : public ::testing::TestWithParam<Pair> {};

TEST_P(BeatSyncTest, PullsTheBeatsTogetherAndHoldsThemWithinAMillisecond) {
  TwoDecks decks(GetParam());
  ASSERT_TRUE(decks.Begin());
  decks.Run(20);
  double worst = 0;
  for (int i = 0; i < 200; ++i) {
    decks.Run(0.3);
    worst = std::max(worst, std::abs(decks.Error()));
  }
  EXPECT_LT(worst, 1);
  EXPECT_LE(decks.largest_bend_, 0.04 + 1e-12);
}

INSTANTIATE_TEST_SUITE_P(Pairs, BeatSyncTest,
                         ::testing::Values(Pair{"EqualTempos", 120, 120},
                                           Pair{"FourPercentApart", 124.8, 120},
                                           Pair{"ALeaderOutOfTempo", 120, 121, 0.97},
                                           Pair{"TwoDevicesThatDrift", 128, 126, 1, 150, 0},
                                           Pair{"ClocksReadWithJitter", 128, 126, 1, -150, 2},
                                           Pair{"HalfTheTempo", 160, 82, 1, 50, 1},
                                           Pair{"TwiceTheTempo", 82, 160, 1, 50, 1},
                                           Pair{"HalfABeatAway", 120, 120, 1, 0, 0, 0.2499}),
                         [](const auto& one) { return one.param.name; });

TEST(BeatSync, RefusesTemposTooFarApartAndUnknownOnes) {
  TwoDecks decks({"", 140, 120});
  EXPECT_FALSE(decks.Begin(10));
  EXPECT_TRUE(decks.Begin(17));
  decks.leader_.grid = nullptr;
  EXPECT_FALSE(decks.Begin(50));
  decks.leader_.bpm = 120;
  EXPECT_TRUE(decks.Begin(0)) << "without beats the tempo alone";
  EXPECT_FALSE(decks.sync_.Error(decks.leader_, decks.follower_));
}

TEST(BeatSync, EndsWhenTheLeaderLeavesTheRange) {
  TwoDecks decks({"", 120, 120});
  ASSERT_TRUE(decks.Begin(8));
  decks.leader_.speed = 1.2;
  EXPECT_FALSE(decks.sync_.Next(decks.leader_, decks.follower_, Seconds(0.01)));
}

TEST(BeatSync, KeepsADistanceThatWasSetOnPurpose) {
  TwoDecks decks({"", 120, 120, 1, 100});
  ASSERT_TRUE(decks.Begin());
  EXPECT_NEAR(decks.Error(), 200, 1);
  decks.sync_.Rebase(decks.leader_, decks.follower_);
  decks.Run(5);
  EXPECT_LT(decks.largest_bend_, 0.001) << "nothing to pull, but the drift";
}

}  // namespace
}  // namespace decks
