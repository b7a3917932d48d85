// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/FixtureEdit.h"

#include <gtest/gtest.h>

namespace dmx {
namespace {

using Angle = FixtureEdit::Angle;

presets Range(int start, int end) {
  presets preset;
  preset.StartLevel = start;
  preset.EndLevel = end;
  return preset;
}

TEST(FixtureEditTest, EveryChangeIsAStepThatIsTakenBackAndMadeAgain) {
  FixtureEdit edit;
  std::vector<Fixture> seen{edit.Now()};
  const auto did = [&] { seen.push_back(edit.Now()); };
  edit.SetName("Spot"), did();
  edit.SetType(FixtureType::Scanner), did();
  edit.SetAngle(Angle::Pan, 540), did();
  edit.SetChannels(2), did();
  edit.SetFunction(2, ChannelFunction::Gobo), did();
  edit.SetLabel(2, "Wheel"), did();
  edit.AddPreset(2, Range(0, 300)), did();
  edit.AddPreset(2, Range(-4, 7)), did();
  edit.SetPreset(2, 1, Range(8, 255)), did();
  edit.MovePreset(2, 1, 2), did();
  edit.RemovePreset(2, 1), did();
  for (std::size_t i = 1; i < seen.size(); ++i) EXPECT_NE(seen[i], seen[i - 1]) << i;
  for (auto at = seen.rbegin() + 1; at != seen.rend(); ++at) {
    edit.History().Undo();
    EXPECT_EQ(edit.Now(), *at);
  }
  EXPECT_FALSE(edit.History().CanUndo());
  for (std::size_t i = 1; i < seen.size(); ++i) edit.History().Redo();
  EXPECT_EQ(edit.Now(), seen.back());
  EXPECT_EQ(edit.Now().pan_angle, 360);
  EXPECT_EQ(*edit.Now().channels.Item(2)->presets.Item(1), *seen.back().channels.Item(2)->presets.Item(1));
  EXPECT_EQ(edit.Now().channels.Item(2)->presets.Item(1)->Owner, 2);
}

TEST(FixtureEditTest, WhatIsTypedOrHeldIsOneStepUntilSomethingElseIsChanged) {
  FixtureEdit edit;
  for (const char* typed : {"S", "Sp", "Spot"}) edit.SetName(typed);
  for (int degrees = 1; degrees <= 5; ++degrees) edit.SetAngle(Angle::Tilt, degrees);
  edit.History().Settle();
  edit.SetAngle(Angle::Tilt, 6);
  edit.History().Undo();
  EXPECT_EQ(edit.AngleOf(Angle::Tilt), 5);
  edit.History().Undo();
  EXPECT_EQ(edit.AngleOf(Angle::Tilt), 0);
  EXPECT_EQ(edit.Now().name, "Spot");
  edit.History().Undo();
  EXPECT_EQ(edit.Now(), Fixture{});
}

TEST(FixtureEditTest, ChannelsThatWereTakenAwayTooFastComeBackAsTheyWere) {
  FixtureEdit edit;
  edit.SetChannels(3);
  edit.SetLabel(3, "Iris");
  for (const int count : {2, 1, 0, 1, 2, 3}) edit.SetChannels(count);
  EXPECT_EQ(edit.Now().channels.Item(3)->label, "Iris");
  edit.SetChannels(513);
  EXPECT_EQ(edit.Now().channels.count(), 512);
}

TEST(FixtureEditTest, ItIsChangedWheneverItDiffersFromWhatWasWritten) {
  FixtureEdit edit;
  EXPECT_FALSE(edit.History().Changed());
  edit.SetName("A");
  const auto written = edit.History().Stamp();
  edit.SetName("AB");  // while it is being written
  edit.History().MarkSaved(written);
  EXPECT_TRUE(edit.History().Changed());
  edit.History().MarkSaved(edit.History().Stamp());
  EXPECT_FALSE(edit.History().Changed());
  edit.SetName("ABC");
  EXPECT_TRUE(edit.History().Changed());
  edit.History().Undo();
  EXPECT_FALSE(edit.History().Changed());
  edit.SetFunction(9, ChannelFunction::Pan);
  edit.SetPreset(1, 1, {});
  EXPECT_FALSE(edit.History().Changed()) << "what is not there is not changed";
}

}  // namespace
}  // namespace dmx
