// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/ShowEdit.h"

#include <gtest/gtest.h>

#include <array>

#include "dmx/ShowFile.h"

namespace dmx {
namespace {

/// A show of pars with three channels each, made by hand.
class ShowEditTest : public ::testing::Test {
 protected:
  static DMXfilename Par(int start, int channels = 3) {
    DMXfilename par{"lib\\par.dmx", static_cast<std::int16_t>(start), 0, {}};
    for (int i = 0; i < channels; ++i) par.Channels.Add({ChannelFunction::Color, "Red", {}});
    return par;
  }
  std::string Refusal(support::Result<void> result) { return result ? "" : result.Failure().text; }
  void SetLevel(int channel, int level) {
    levels[static_cast<std::size_t>(channel - 1)] = static_cast<DmxLevel>(level);
  }
  std::vector<int> Values(int scene, int step) {
    std::vector<int> values;
    for (const Sliders& record : edit.Step(scene, step)->SceneChannel) values.push_back(record.ChannelValue);
    return values;
  }
  std::vector<int> Steps(int scene) {
    std::vector<int> firsts;
    for (const SceneStep& step : edit.Now().scenes.Item(scene)->Steps)
      firsts.push_back(step.SceneChannel.Item(1)->ChannelValue);
    return firsts;
  }
  using V = std::vector<int>;

  ShowEdit edit;
  std::array<DmxLevel, kUniverseChannels> levels{};
};

TEST_F(ShowEditTest, FixturesThatDoNotFitAreRefusedAndChangeNothing) {
  EXPECT_EQ(Refusal(edit.AddFixture(Par(1))), "");
  EXPECT_EQ(Refusal(edit.AddFixture(Par(3))),
            "Channel 3 is already taken. Please choose another Start Channel");
  EXPECT_EQ(Refusal(edit.AddFixture(Par(511))), "You are over the available 512 channels!");
  EXPECT_EQ(Refusal(edit.AddFixture(Par(510))), "");
  EXPECT_EQ(Refusal(edit.MoveFixture(2, 2)),
            "Channel 2 is already taken. Please choose another Start Channel");
  EXPECT_EQ(Refusal(edit.MoveFixture(2, 0)), "You are over the available 512 channels!");
  EXPECT_EQ(edit.Now().fixtures.Item(2)->StartChannel, 510);
  EXPECT_EQ(Refusal(edit.MoveFixture(1, 2)), "") << "over its own place";
  EXPECT_EQ(edit.Channels(), (V{2, 3, 4, 510, 511, 512}));
}

TEST_F(ShowEditTest, LevelsStayWithTheirFixtureWhateverIsPatchedAroundIt) {
  ASSERT_TRUE(edit.AddFixture(Par(10)));
  SetLevel(10, 100);
  SetLevel(12, 120);
  edit.AddScene(0, "A", levels);
  ASSERT_TRUE(edit.AddFixture(Par(1, 2)));
  EXPECT_EQ(Values(1, 1), (V{0, 0, 100, 0, 120}));
  ASSERT_TRUE(edit.MoveFixture(1, 11));
  EXPECT_EQ(edit.Channels(), (V{1, 2, 11, 12, 13}));
  EXPECT_EQ(Values(1, 1), (V{0, 0, 100, 0, 120}));
  edit.RemoveFixture(2);
  EXPECT_EQ(Values(1, 1), (V{100, 0, 120}));
  edit.Undo();
  EXPECT_EQ(Values(1, 1), (V{0, 0, 100, 0, 120}));
  EXPECT_EQ(edit.Patched().At(1).fixture, 2);
}

TEST_F(ShowEditTest, RecordsOfChannelsWithoutAFixtureAreNotLostByPatching) {
  Show show;
  show.scenes.Add().Steps.Add();
  for (int level = 1; level <= 6; ++level)
    show.scenes.Item(1)->Steps.Item(1)->SceneChannel.Add().ChannelValue = static_cast<std::int16_t>(level);
  edit.Begin(show);
  ASSERT_TRUE(edit.AddFixture(Par(2)));
  EXPECT_EQ(Values(1, 1), (V{1, 2, 3, 4, 5, 6}));
  ASSERT_TRUE(edit.MoveFixture(1, 5));
  EXPECT_EQ(Values(1, 1), (V{1, 0, 0, 0, 2, 3, 4})) << "the fixture brings its own levels";
}

TEST_F(ShowEditTest, AFixtureWithoutAFileKeepsItsPlaceAndGetsAnotherFileWhereThatFits) {
  Show show;
  show.fixtures.Add({"gone.dmx", 1, 4, {}});
  show.fixtures.Add(Par(5));
  edit.Begin(show);
  EXPECT_EQ(edit.Channels(), (V{1, 2, 3, 4, 5, 6, 7}));
  EXPECT_EQ(Refusal(edit.MoveFixture(1, 510)), "You are over the available 512 channels!");
  EXPECT_EQ(Refusal(edit.ReplaceFixture(1, Par(0, 5))),
            "Channel 5 is already taken. Please choose another Start Channel");
  EXPECT_EQ(Refusal(edit.ReplaceFixture(1, Par(0, 3))), "");
  EXPECT_EQ(edit.Now().fixtures.Item(1)->NumberOf, 3);
  EXPECT_EQ(edit.Channels(), (V{1, 2, 3, 5, 6, 7}));
}

TEST_F(ShowEditTest, AFixtureThatDiffersFromItsFileIsRepairedByHandAndNoneElseIsTouched) {
  const struct {
    int had, has;
    V repaired;
  } cases[] = {{2, 4, {1, 2, 0, 0, 10}}, {4, 2, {1, 2, 10}}};
  for (const auto& one : cases) {
    Show show;
    show.fixtures.Add(Par(1, one.has)).NumberOf = static_cast<std::int16_t>(one.had);
    show.fixtures.Add(Par(10, 1)).NumberOf = 1;
    SceneStep& step = show.scenes.Add().Steps.Add();
    for (int level = 1; level <= one.had; ++level)
      step.SceneChannel.Add().ChannelValue = static_cast<std::int16_t>(level);
    step.SceneChannel.Add().ChannelValue = 10;
    edit.Begin(show);
    levels.fill(99);
    edit.RecordStep(1, 1, levels);
    EXPECT_EQ(Values(1, 1), one.had == 2 ? (V{99, 99, 99}) : (V{99, 99, 3, 4, 99}))
        << "what is not sent is kept";
    edit.Undo();
    ASSERT_TRUE(edit.MoveFixture(1, 20));
    EXPECT_EQ(Values(1, 1).front(), 10) << "its levels went along";
    EXPECT_EQ(edit.Now().fixtures.Item(1)->NumberOf, one.had);
    edit.Undo();
    edit.RepairFixture(1);
    EXPECT_EQ(Values(1, 1), one.repaired);
    EXPECT_EQ(edit.Now().fixtures.Item(1)->NumberOf, one.has);
    EXPECT_EQ(edit.Channels().size(), one.repaired.size());
    edit.Undo();
    EXPECT_EQ(ShowText(edit.Now()), ShowText(show));
  }
}

TEST_F(ShowEditTest, WhatWasSetAsideComesBackWithItsLevelsOrIsDropped) {
  Show show;
  show.fixtures.Add(Par(1)).NumberOf = 3;
  show.fixtures.Add(Par(20, 1)).NumberOf = 1;
  for (const int start : {2, 3}) {
    show.aside.push_back({Par(start, 1), 1});
    show.aside.back().fixture.NumberOf = 1;
  }
  SceneStep& step = show.scenes.Add().Steps.Add();
  for (const int level : {1, 2, 3, 200, 201, 20})
    step.SceneChannel.Add().ChannelValue = static_cast<std::int16_t>(level);
  edit.Begin(show);
  EXPECT_EQ(edit.Channels(), (V{1, 2, 3, 0, 0, 20}));
  EXPECT_EQ(Refusal(edit.BringBack(1, 3)), "Channel 3 is already taken. Please choose another Start Channel");
  EXPECT_EQ(Refusal(edit.BringBack(1, 30)), "");
  EXPECT_EQ(edit.Now().fixtures.Item(2)->StartChannel, 30) << "where it stood";
  EXPECT_EQ(Values(1, 1), (V{1, 2, 3, 201, 20, 200}));
  EXPECT_EQ(edit.Channels(), (V{1, 2, 3, 0, 20, 30}));
  edit.RemoveFixture(1);
  EXPECT_EQ(Values(1, 1), (V{201, 20, 200}));
  edit.AddStep(1, 1, levels);
  EXPECT_EQ(Values(1, 2), (V{201, 0, 0}));
  edit.DropAside(1);
  EXPECT_EQ(Values(1, 1), (V{20, 200}));
  EXPECT_TRUE(edit.Now().aside.empty());
}

TEST_F(ShowEditTest, AnotherFileWithOtherChannelsMovesNoLevelOfTheRest) {
  Show show;
  show.fixtures.Add({"gone.dmx", 1, 3, {}});
  show.fixtures.Add(Par(5, 1)).NumberOf = 1;
  SceneStep& step = show.scenes.Add().Steps.Add();
  for (const int level : {1, 2, 3, 50})
    step.SceneChannel.Add().ChannelValue = static_cast<std::int16_t>(level);
  edit.Begin(show);
  ASSERT_TRUE(edit.ReplaceFixture(1, Par(0, 1)));
  EXPECT_EQ(Values(1, 1), (V{1, 2, 3, 50})) << "until it is repaired";
  EXPECT_EQ(edit.Channels(), (V{1, 0, 0, 5}));
  edit.RepairFixture(1);
  EXPECT_EQ(Values(1, 1), (V{1, 50}));
}

TEST_F(ShowEditTest, WhereTheSpansTellNothingThereIsNothingToRepair) {
  Show show;
  show.fixtures.Add(Par(1)).NumberOf = 0;
  SceneStep& step = show.scenes.Add().Steps.Add();
  for (int record = 1; record <= 3; ++record) step.SceneChannel.Add();
  edit.Begin(show);
  EXPECT_FALSE(edit.NeedsRepair(1));
  show.fixtures.Item(1)->NumberOf = 2;
  show.fixtures.Add(Par(5, 1)).NumberOf = 1;
  edit.Begin(show);
  EXPECT_TRUE(edit.NeedsRepair(1));
  EXPECT_FALSE(edit.NeedsRepair(2));
}

TEST_F(ShowEditTest, ScenesAndStepsAreAddedCopiedMovedAndRemoved) {
  ASSERT_TRUE(edit.AddFixture(Par(1)));
  EXPECT_EQ(edit.AddScene(0, "A", levels), 1);
  for (const int level : {1, 2}) {
    SetLevel(1, level);
    edit.AddStep(1, 9, levels);
  }
  EXPECT_EQ(Steps(1), (V{0, 1, 2}));
  edit.MoveStep(1, 3, 1);
  EXPECT_EQ(Steps(1), (V{2, 0, 1}));
  EXPECT_EQ(*edit.Step(1, 2)->SceneChannel.Item(1), (Sliders{0, -2, 2, true}));
  EXPECT_EQ(edit.CopyStep(1, 1), 2);
  edit.RemoveSteps(1, {3});
  EXPECT_EQ(Steps(1), (V{2, 2, 1}));
  SetLevel(1, 9);
  edit.RecordStep(1, 2, levels);
  EXPECT_EQ(Steps(1), (V{2, 9, 1}));
  EXPECT_EQ(edit.CopyScene(1, "B"), 2);
  edit.AddScene(1, "C", levels);
  edit.MoveScene(3, 1);
  edit.RemoveScene(2);
  edit.RenameScene(2, "D");
  edit.SetLoops(2, 99999);
  EXPECT_EQ(edit.Now().scenes.Item(1)->SceneName, "B");
  EXPECT_EQ(edit.Now().scenes.Item(2)->SceneName, "D");
  EXPECT_EQ(edit.Now().scenes.Item(2)->Loops, 32767);
  EXPECT_EQ(edit.Now().scenes.count(), 2);
}

TEST_F(ShowEditTest, TimesAreKeptAsTheFileHasThemAndTellWhenAStepBegins) {
  edit.AddScene(0, "A", levels);
  edit.SetFade(1, {1}, Tenths(15));
  edit.SetWait(1, {1}, Tenths(100000));
  EXPECT_EQ(edit.Step(1, 1)->FadeTime, "00:01.5");
  EXPECT_EQ(edit.Step(1, 1)->WaitTime, "99:59.9");
  edit.SetWait(1, {1}, Tenths(5));
  edit.SetLoops(1, 3);
  edit.AddScene(1, "B", levels);
  edit.SetFade(2, {1}, Tenths(10));
  edit.SetWait(2, {1}, Tenths(0));
  edit.AddStep(2, 1, levels);
  EXPECT_EQ(edit.StartOf(1, 1), std::chrono::seconds(0));
  EXPECT_EQ(edit.StartOf(2, 1), std::chrono::seconds(6));
  EXPECT_EQ(edit.StartOf(2, 2), std::chrono::seconds(7));
  EXPECT_EQ(edit.Plan().Value().Length(), std::chrono::seconds(8));
}

TEST(ShowTimeTest, ATimeIsTypedInSecondsOrWithMinutes) {
  const struct {
    const char* typed;
    std::optional<int> tenths;
  } cases[] = {{"2", 20},
               {"1.5", 15},
               {"0,25", 2},
               {"2:30.5", 1505},
               {"01:00.0", 600},
               {".5", 5},
               {"99:59.99", 59999},
               {"99999999999", 59999},
               {"", std::nullopt},
               {"1.2.3", std::nullopt},
               {"-1", std::nullopt},
               {":", std::nullopt},
               {"1s", std::nullopt}};
  for (const auto& one : cases) {
    const auto read = ReadTypedTime(one.typed);
    ASSERT_EQ(read.has_value(), one.tenths.has_value()) << one.typed;
    EXPECT_EQ(read.value_or(Tenths(0)).count(), one.tenths.value_or(0)) << one.typed;
  }
}

TEST_F(ShowEditTest, EveryStepBackGivesTheShowThatWasThere) {
  std::vector<std::string> seen{ShowText(edit.Now())};
  const auto did = [&] { seen.push_back(ShowText(edit.Now())); };
  EXPECT_TRUE(edit.AddFixture(Par(1)).Ok());
  did();
  edit.AddScene(0, "A", levels), did();
  SetLevel(2, 7);
  edit.AddStep(1, 1, levels), did();
  edit.SetFade(1, {1, 2, 7}, Tenths(2)), did();
  EXPECT_TRUE(edit.MoveFixture(1, 100).Ok());
  did();
  edit.RemoveScene(1), did();
  for (auto at = seen.rbegin() + 1; at != seen.rend(); ++at) {
    edit.Undo();
    EXPECT_EQ(ShowText(edit.Now()), *at);
  }
  EXPECT_FALSE(edit.History().Changed());
  for (std::size_t i = 1; i < seen.size(); ++i) edit.Redo();
  EXPECT_EQ(ShowText(edit.Now()), seen.back());
}

}  // namespace
}  // namespace dmx
