// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "dmx/OutputStage.h"
#include "dmx/Wires.h"
#include "dmx/dmx_output.h"
#include "dmx/testing/RecordingDmxInterface.h"
#include "support/Settings.h"
#include "support/testing/MemorySettings.h"

namespace dmx {
namespace {

using Calls = std::vector<std::string>;

class OutputTest : public ::testing::Test {
 protected:
  testing::RecordingDmxInterface wire_;
  OutputStage stage_{wire_};
  Universe universe_{stage_};
  support::testing::MemorySettings settings_;
  support::Settings door_{settings_, support::ProgramFolder("/dj")};
  OutputSwitch switch_{stage_, door_};
};

TEST_F(OutputTest, TheSwitchStoresItsStateAndMakesTheDescribedCalls) {
  switch_.TurnOn();
  EXPECT_TRUE(switch_.IsOn());
  EXPECT_EQ(wire_.TakeCalls(), (Calls{"StartDevice", "SetChannelCount 512"}));
  switch_.TurnOff();
  EXPECT_FALSE(switch_.IsOn());
  EXPECT_EQ(wire_.TakeCalls(), Calls{"StopDevice"});
  EXPECT_EQ(settings_.Sets(), (Calls{"TLVG/Setup/UseK8062=True", "TLVG/Setup/UseK8062=False"}));
}

TEST_F(OutputTest, WindowsMakeTheirCallsWhateverTheSwitchSays) {
  switch_.TurnOn();
  wire_.TakeCalls();
  switch_.ShowEditorLoaded();
  switch_.FixtureEditorLoaded();
  switch_.MainWindowClosed();
  EXPECT_EQ(wire_.TakeCalls(),
            (Calls{"StartDevice", "SetChannelCount 512", "SetChannelCount 512", "StopDevice"}));
  EXPECT_EQ(settings_.Sets().size(), 1u);
}

TEST_F(OutputTest, TheStoredStateOpensTheInterfaceAtTheStart) {
  switch_.Restore();
  EXPECT_EQ(wire_.TakeCalls(), Calls());
  settings_.Set("TLVG", "Setup", "UseK8062", "True");
  switch_.Restore();
  EXPECT_TRUE(switch_.IsOn());
  EXPECT_EQ(wire_.TakeCalls(), (Calls{"StartDevice", "SetChannelCount 512"}));
  EXPECT_EQ(settings_.Sets().size(), 1u);
}

TEST_F(OutputTest, EveryFaderMovementIsOneCallAndNothingElseIs) {
  stage_.StartDevice();
  wire_.TakeCalls();
  universe_.MoveFader(512, 255);
  universe_.MoveFader(512, 255);
  universe_.MoveFader(1, 0);
  universe_.MoveFader(512, 0);
  universe_.MoveFader(0, 9);
  universe_.MoveFader(513, 9);
  EXPECT_EQ(wire_.TakeCalls(), (Calls{"SetData 512 255", "SetData 512 0"}));
}

TEST_F(OutputTest, LevelsAreDroppedUntilTheInterfaceIsStarted) {
  universe_.MoveFader(7, 70);
  switch_.TurnOn();
  switch_.TurnOff();
  universe_.MoveFader(8, 80);
  stage_.SetGrandMaster(100);
  EXPECT_EQ(wire_.TakeCalls(), (Calls{"StartDevice", "SetChannelCount 512", "StopDevice"}));
  stage_.SetGrandMaster(255);
  stage_.StartDevice();
  wire_.TakeCalls();
  universe_.Resend();
  EXPECT_EQ(wire_.TakeCalls(), (Calls{"SetData 7 70", "SetData 8 80"}));
}

/// A fixture from channel 1 on, all faders at 200, the output on.
class OutputStageTest : public OutputTest {
 protected:
  void Patch(const std::vector<FixtureChannel>& channels) {
    DMXname fixtures;
    DMXfilename& fixture = fixtures.Add();
    fixture.StartChannel = 1;
    for (const FixtureChannel& channel : channels) fixture.Channels.Add(channel);
    stage_.SetRules(RulesFor(fixtures));
    stage_.StartDevice();
    for (int channel = 1; channel <= 6; ++channel) universe_.MoveFader(channel, 200);
    wire_.TakeCalls();
  }
  std::vector<int> Wire(int channels) const {
    std::vector<int> levels;
    for (int channel = 1; channel <= channels; ++channel) levels.push_back(wire_.Level(channel));
    return levels;
  }
};

FixtureChannel Of(ChannelFunction function, std::string label = "") {
  return {function, std::move(label), {}};
}

FixtureChannel StrobingShutter() {
  FixtureChannel shutter = Of(ChannelFunction::Shutter);
  const auto add = [&](PresetEffect effect, int start, int end) {
    presets& preset = shutter.presets.Add();
    preset.Effect = effect;
    preset.StartLevel = start;
    preset.EndLevel = end;
  };
  add(PresetEffect::Open, 0, 9);
  add(PresetEffect::Closed, 10, 19);
  add(PresetEffect::Strobe, 20, 250);
  add(PresetEffect::None, 251, 255);
  return shutter;
}

TEST_F(OutputStageTest, MasterScalesDimmersAndWhatNobodyHolds) {
  Patch({Of(ChannelFunction::Dimmer), Of(ChannelFunction::Pan), Of(ChannelFunction::Color, "Red"),
         Of(ChannelFunction::Shutter)});
  stage_.SetGrandMaster(128);
  EXPECT_EQ(Wire(5), (std::vector{100, 200, 200, 200, 100}));
  EXPECT_EQ(wire_.TakeCalls().size(), 3u);  // 1, 5 and 6
  stage_.SetGrandMaster(0);
  EXPECT_EQ(Wire(5), (std::vector{0, 200, 200, 200, 0}));
}

TEST_F(OutputStageTest, WithoutADimmerTheMasterLiesOnColoursThatMixAndElseOnTheShutter) {
  Patch({Of(ChannelFunction::Color, "Red 1"), Of(ChannelFunction::Color, "Wheel"),
         Of(ChannelFunction::Shutter)});
  stage_.SetGrandMaster(128);
  EXPECT_EQ(Wire(3), (std::vector{100, 200, 200}));
  Patch({Of(ChannelFunction::Color, "Wheel"), Of(ChannelFunction::Shutter)});
  EXPECT_EQ(Wire(2), (std::vector{200, 100}));
}

TEST_F(OutputStageTest, AShutterWithPresetsIsNotFadedThroughThem) {
  Patch({StrobingShutter()});
  stage_.SetFlashGuard(OutputStage::FlashGuard::Lifted);
  stage_.SetGrandMaster(1);
  EXPECT_EQ(Wire(1), std::vector{200});
  stage_.SetGrandMaster(0);
  EXPECT_EQ(Wire(1), std::vector{10});
}

TEST_F(OutputStageTest, BlackoutClosesLightAndLeavesMovement) {
  Patch({Of(ChannelFunction::Dimmer), StrobingShutter(), Of(ChannelFunction::Tilt), Of(ChannelFunction::Gobo),
         Of(ChannelFunction::Color, "Blue")});
  stage_.SetBlackout(OutputStage::Blackout::On);
  EXPECT_EQ(Wire(6), (std::vector{0, 10, 200, 200, 200, 0}));
  universe_.MoveFader(1, 90);
  EXPECT_EQ(Wire(1), std::vector{0});
  stage_.SetBlackout(OutputStage::Blackout::Off);
  EXPECT_EQ(Wire(1), std::vector{90});
}

TEST_F(OutputStageTest, TheGuardTurnsFlashesIntoOpenLightUntilItIsLifted) {
  Patch({StrobingShutter()});
  EXPECT_EQ(Wire(1), std::vector{0});
  universe_.MoveFader(1, 255);
  EXPECT_EQ(Wire(1), std::vector{255});
  universe_.MoveFader(1, 250);
  EXPECT_EQ(Wire(1), std::vector{0});
  stage_.SetFlashGuard(OutputStage::FlashGuard::Lifted);
  EXPECT_EQ(Wire(1), std::vector{250});
}

TEST(WiresTest, AllShowTheSameAndOneThatIsNotThereIsToldOfOnlyWhileNoneSends) {
  using State = DmxInterfaceStatus::State;
  testing::RecordingDmxInterface box, net;
  Wires wires({&box, &net});
  wires.StartDevice();
  wires.SetData(7, 9);
  EXPECT_EQ(box.Level(7), 9);
  EXPECT_EQ(net.Level(7), 9);
  box.status = {State::Searching, 0, {}, 0, "No box.", {}};
  EXPECT_EQ(wires.Status().text, "No box.");
  net.status = {State::Sending, 1, {}, 5, "", {}};
  EXPECT_EQ(wires.Status().state, State::Sending);
  EXPECT_EQ(wires.Status().text, "");
  box.status = {State::Sending, 14, {}, 20, "", {}};
  EXPECT_EQ(wires.Status().frames, 20U) << "of the first one that sends";
  net.status = {State::Searching, 0, {}, 5, "The network is gone.", {}};
  EXPECT_EQ(wires.Status().state, State::Sending);
  EXPECT_EQ(wires.Status().text, "The network is gone.") << "lamps of it stay as they were";
  wires.StopDevice();
  EXPECT_EQ(net.TakeCalls().back(), "StopDevice");
}

}  // namespace
}  // namespace dmx
