// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/ShowPlayer.h"

#include <gtest/gtest.h>

#include "dmx/testing/RecordingDmxInterface.h"
#include "dmx/testing/ShowMaker.h"
#include "support/testing/FakeClock.h"

namespace dmx {
namespace {

using namespace std::chrono_literals;
using testing::StepWith;
using State = ShowPlayer::State;

/// A fade of 2 s from 0 to 200 on channel 3, 1 s of waiting, and a jump back to 0 for 1 s.
class ShowPlayerTest : public ::testing::Test {
 protected:
  ShowPlayerTest() {
    Scenes scenes;
    testing::AddScene(scenes, 1,
                      {StepWith("00:02.0", "00:01.0", {200}), StepWith("00:00.0", "00:01.0", {0})});
    plan_ = std::make_shared<ShowPlan>(ShowPlan::Make(scenes, std::vector{3}).Value());
  }
  void Play(ShowPlayer::Repeat repeat = ShowPlayer::Repeat::Once) {
    player_.Play(plan_, repeat, clock_.Now());
    player_.Tick(clock_.Now());
  }
  /// Ticks as the conductor does.
  void Advance(std::chrono::milliseconds time) {
    for (; time >= 10ms; time -= 10ms) {
      clock_.Advance(10ms);
      player_.Tick(clock_.Now());
    }
  }
  /// Passes over all ticks but the last.
  void Hang(std::chrono::milliseconds time) {
    clock_.Advance(time);
    player_.Tick(clock_.Now());
  }
  int Level() const { return wire_.Level(3); }

  support::testing::FakeClock clock_;
  testing::RecordingDmxInterface wire_;
  Universe universe_{wire_};
  ShowPlayer player_{universe_};
  std::shared_ptr<const ShowPlan> plan_;
};

TEST_F(ShowPlayerTest, FadersFollowTheShowToItsEnd) {
  Play();
  Advance(1000ms);
  EXPECT_NEAR(Level(), 100, 3);
  Advance(1100ms);
  EXPECT_EQ(Level(), 200);
  Advance(1200ms);
  EXPECT_EQ(Level(), 0);
  EXPECT_EQ(player_.Now(), State::Playing);
  Advance(900ms);
  EXPECT_EQ(player_.Now(), State::Stopped);
}

TEST_F(ShowPlayerTest, AFadeMovesItsFadersFortyFourTimesASecond) {
  Play();
  wire_.TakeCalls();
  Advance(1000ms);
  EXPECT_NEAR(static_cast<double>(wire_.TakeCalls().size()), 44, 3);
}

TEST_F(ShowPlayerTest, AStepIsHeldByTheWaitTimerAndLeftFiftyFiveMillisecondsAfterIt) {
  Play();
  Advance(2500ms);
  EXPECT_FALSE(player_.PlayTimer.Enabled);
  EXPECT_TRUE(player_.WaitTimer.Enabled);
  Advance(500ms);
  EXPECT_FALSE(player_.WaitTimer.Enabled);
  EXPECT_EQ(player_.PlayTimer.Interval, support::Duration(55ms));
  EXPECT_EQ(Level(), 200);
  Advance(60ms);
  EXPECT_EQ(Level(), 0);
  EXPECT_EQ(player_.Position(clock_.Now()), 3060ms);  // the delay is not the show's
}

TEST_F(ShowPlayerTest, ALateTickMakesNoShowLonger) {
  Play();
  Hang(1500ms);
  EXPECT_EQ(Level(), 150);
  Hang(30s);
  EXPECT_EQ(Level(), 0);
  EXPECT_EQ(player_.Now(), State::Stopped);
}

TEST_F(ShowPlayerTest, PausesHoldsAndGoesOnFromThere) {
  Play();
  Advance(1000ms);
  player_.Pause(clock_.Now());
  const int held = Level();
  Advance(5000ms);
  EXPECT_EQ(Level(), held);
  EXPECT_EQ(player_.Position(clock_.Now()), 1s);
  player_.Resume(clock_.Now());
  Advance(500ms);
  EXPECT_NEAR(Level(), 150, 3);
  EXPECT_EQ(player_.PlaceAt(clock_.Now()), (ShowPlan::Place{1, 1, 1, true, 3s}));
}

TEST_F(ShowPlayerTest, SeeksWithinTheShow) {
  Play();
  player_.Seek(2500ms, clock_.Now());
  Advance(10ms);
  EXPECT_EQ(Level(), 200);
  player_.Seek(99s, clock_.Now());
  Advance(10ms);
  EXPECT_EQ(player_.Now(), State::Stopped);
}

TEST_F(ShowPlayerTest, RepeatsWithoutLosingTime) {
  Play(ShowPlayer::Repeat::ForEver);
  Hang(9s);  // two rounds of 4 s, and 1 s
  Advance(30ms);
  EXPECT_NEAR(Level(), 100, 5);
  Advance(4000ms);
  EXPECT_NEAR(Level(), 100, 5);
}

TEST_F(ShowPlayerTest, AFaderThatTheShowDoesNotMoveBelongsToTheUser) {
  Play();
  Advance(2500ms);
  universe_.MoveFader(3, 77);
  Advance(400ms);
  EXPECT_EQ(Level(), 77);
  Advance(200ms);
  EXPECT_EQ(Level(), 0);
}

TEST_F(ShowPlayerTest, StopLeavesTheFadersAndNothingElseHappens) {
  Play();
  Advance(1000ms);
  player_.Stop();
  wire_.TakeCalls();
  Advance(5000ms);
  player_.Pause(clock_.Now());
  player_.Resume(clock_.Now());
  player_.Seek(1s, clock_.Now());
  Advance(100ms);
  EXPECT_TRUE(wire_.TakeCalls().empty());
}

}  // namespace
}  // namespace dmx
