// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/FixtureControls.h"

#include <gtest/gtest.h>

namespace dmx {
namespace {

using Function = ChannelFunction;
using V = std::vector<int>;

ChannelSlider Channels(const std::vector<std::pair<Function, const char*>>& list) {
  ChannelSlider channels;
  for (const auto& [function, label] : list) channels.Add({function, label, {}});
  return channels;
}

const ChannelSlider kBar = Channels({{Function::Dimmer, "Red 1"},
                                     {Function::Dimmer, "GREEN 1"},
                                     {Function::Color, "blue"},
                                     {Function::Color, "Red 2"},
                                     {Function::Free, "Red alert"}});
const ChannelSlider kHead = Channels({{Function::Free, ""},
                                      {Function::Tilt, ""},
                                      {Function::Pan, ""},
                                      {Function::Gobo, "1"},
                                      {Function::Dimmer, "Dimmer"},
                                      {Function::Gobo, "2"},
                                      {Function::Dimmer, "dimmer"}});

TEST(FixtureControlsTest, ColourIsMixedByDimmersAndColoursOfThoseNames) {
  const ColourChannels colour = ColourChannelsOf(kBar);
  EXPECT_EQ(colour.red, (V{1, 4}));
  EXPECT_EQ(colour.green, V{2});
  EXPECT_EQ(colour.blue, V{3});
  EXPECT_TRUE(colour.Mix());
  EXPECT_FALSE(ColourChannelsOf(kHead).Mix());
}

TEST(FixtureControlsTest, FadersStandWhereTheHandLooksForThem) {
  EXPECT_EQ(FaderOrder(kHead), (V{5, 7, 4, 6, 3, 2, 1}));
  EXPECT_EQ(FirstChannel(kHead, Function::Gobo), 4);
  EXPECT_EQ(FirstChannel(kHead, Function::Shutter), 0);
}

TEST(FixtureControlsTest, TheSameChannelIsFoundByFunctionLabelAndRank) {
  const ChannelSlider other =
      Channels({{Function::Dimmer, "DIMMER"}, {Function::Gobo, "2"}, {Function::Dimmer, "Dimmer"}});
  const V expected{0, 0, 0, 0, 1, 2, 3};
  for (int channel = 1; channel <= 7; ++channel)
    EXPECT_EQ(SameChannel(kHead, channel, other), expected[static_cast<std::size_t>(channel - 1)]) << channel;
  EXPECT_EQ(SameChannel(kHead, 8, other), 0);
}

TEST(FixtureControlsTest, FineChannelsAreKnownByTheirLabels) {
  const struct {
    ChannelSlider channels;
    int coarse;
    int fine;
  } cases[] = {{kHead, 3, 0},
               {Channels({{Function::Pan, "Pan"}, {Function::Free, "Pan fine"}}), 1, 2},
               {Channels({{Function::Pan, "FINE"}, {Function::Pan, ""}, {Function::Free, "fine"}}), 2, 1},
               {Channels({{Function::Tilt, ""}, {Function::Pan, ""}, {Function::Tilt, "Tilt fijn"}}), 2, 0},
               {Channels({{Function::Pan, "left"}, {Function::Pan, "right"}}), 1, 0},
               {Channels({{Function::Pan, "fine"}}), 1, 0},
               {Channels({{Function::Free, "Pan fine"}}), 0, 0}};
  int number = 0;
  for (const auto& one : cases) {
    const AxisChannels axis = AxisChannelsOf(one.channels, Function::Pan);
    EXPECT_EQ(axis.coarse, one.coarse) << "case " << ++number;
    EXPECT_EQ(axis.fine, one.fine) << "case " << number;
  }
}

TEST(FixtureControlsTest, APlaceOfAnAxisIsLevelsAndBack) {
  const AxisChannels coarse{1, 0};
  const AxisChannels fine{1, 2};
  EXPECT_EQ(LevelsAt(coarse, 0.5), (AxisLevels{128, 0}));
  EXPECT_EQ(LevelsAt(fine, 0.5), (AxisLevels{128, 0}));
  EXPECT_EQ(LevelsAt(fine, 0.501), (AxisLevels{128, 65}));
  for (const AxisChannels& axis : {coarse, fine}) {
    const DmxLevel last = axis.fine == 0 ? 0 : 255;
    EXPECT_EQ(LevelsAt(axis, -1), (AxisLevels{0, 0}));
    EXPECT_EQ(LevelsAt(axis, 2), (AxisLevels{255, last}));
    const AxisLevels levels{77, axis.fine == 0 ? DmxLevel{0} : DmxLevel{201}};
    EXPECT_EQ(LevelsAt(axis, PlaceOf(axis, levels)), levels);
  }
}

}  // namespace
}  // namespace dmx
