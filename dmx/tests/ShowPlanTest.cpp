// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/ShowPlan.h"

#include <gtest/gtest.h>

#include <array>
#include <numeric>

#include "dmx/testing/ShowMaker.h"

namespace dmx {
namespace {

using namespace std::chrono_literals;
using testing::StepWith;

class ShowPlanTest : public ::testing::Test {
 protected:
  void Scene(int loops, std::vector<SceneStep> steps) { testing::AddScene(scenes_, loops, std::move(steps)); }
  void Lay(std::vector<int> channels = {1}) {
    auto plan = ShowPlan::Make(scenes_, channels);
    ASSERT_TRUE(plan.Ok());
    plan_ = std::make_unique<ShowPlan>(std::move(plan).Value());
  }
  int Level(ShowTime at, int channel = 1) const {
    std::array<DmxLevel, kUniverseChannels> start{};
    start.fill(200);
    auto levels = start;
    plan_->LevelsAt(at, start, levels);
    return levels.at(static_cast<std::size_t>(channel - 1));
  }

  Scenes scenes_;
  std::unique_ptr<ShowPlan> plan_;
};

TEST_F(ShowPlanTest, LevelsMoveInAStraightLineAndThenHold) {
  Scene(1, {StepWith("00:01.0", "00:01.0", {0}), StepWith("00:02.0", "00:00.5", {255})});
  Lay();
  const std::vector<std::pair<ShowTime, int>> cases{
      {-1s, 200},   {0s, 200}, {500ms, 100},  {999ms, 0}, {1s, 0},       {1999ms, 0}, {2s, 0},
      {2500ms, 64}, {3s, 128}, {3999ms, 255}, {4s, 255},  {4500ms, 255}, {100h, 255}};
  for (const auto& [at, level] : cases) EXPECT_EQ(Level(at), level) << at.count();
  EXPECT_EQ(plan_->Length(), 4500ms);
}

TEST_F(ShowPlanTest, AFurtherLoopComesFromItsOwnLastStep) {
  Scene(3, {StepWith("00:01.0", "00:00.0", {0}), StepWith("00:01.0", "00:00.0", {100})});
  Lay();
  EXPECT_EQ(Level(500ms), 100);  // from 200
  EXPECT_EQ(Level(2500ms), 50);  // from 100
  EXPECT_EQ(Level(4500ms), 50);
  EXPECT_EQ(plan_->Length(), 6s);
  EXPECT_EQ(plan_->At(5s), (ShowPlan::Place{1, 3, 2, true, 6s}));
}

TEST_F(ShowPlanTest, ScenesFollowEachOtherAndThoseThatAreNotPlayedAreLeftOut) {
  Scene(1, {StepWith("00:00.0", "00:01.0", {10})});
  Scene(0, {StepWith("00:00.0", "00:01.0", {99})});
  Scene(-3, {StepWith("00:00.0", "00:01.0", {99})});
  Scene(5, {});
  Scene(2, {StepWith("00:00.0", "00:00.0", {50}), StepWith("00:01.0", "00:01.0", {150})});
  Lay();
  EXPECT_EQ(Level(999ms), 10);
  EXPECT_EQ(plan_->At(1s), (ShowPlan::Place{5, 1, 2, true, 3s}));
  EXPECT_EQ(Level(1500ms), 100);  // from the step of no length
  EXPECT_EQ(plan_->At(4s), (ShowPlan::Place{5, 2, 2, false, 5s}));
  EXPECT_EQ(plan_->At(99s), (ShowPlan::Place{5, 2, 2, false, 5s}));
}

TEST_F(ShowPlanTest, AChannelWithoutARecordKeepsItsLevel) {
  Scene(2, {StepWith("00:00.0", "00:01.0", {10}), StepWith("00:00.0", "00:01.0", {20, 30})});
  Lay({5, 9, 12});
  EXPECT_EQ(Level(0s, 9), 200);
  EXPECT_EQ(Level(1s, 9), 30);
  EXPECT_EQ(Level(2s, 9), 30);
  EXPECT_EQ(Level(2s, 5), 10);
  for (const int untouched : {1, 12, 512}) EXPECT_EQ(Level(3s, untouched), 200) << untouched;
}

TEST_F(ShowPlanTest, AShowWithoutStepsOrWithoutTimeIsOverAtOnce) {
  Lay();
  EXPECT_EQ(Level(0s), 200);
  EXPECT_EQ(plan_->At(0s), ShowPlan::Place());
  Scene(9, {StepWith("00:00.0", "00:00.0", {7})});
  Lay();
  EXPECT_EQ(plan_->Length(), 0s);
  EXPECT_EQ(Level(0s), 7);
}

TEST_F(ShowPlanTest, AShowThatWouldTakeAllMemoryIsRefused) {
  dmx::Scene& scene = scenes_.Add();
  for (int i = 0; i < 70'000; ++i) scene.Steps.Add();
  std::vector<int> channels(kUniverseChannels);
  std::iota(channels.begin(), channels.end(), 1);
  EXPECT_FALSE(ShowPlan::Make(scenes_, channels));
}

}  // namespace
}  // namespace dmx
