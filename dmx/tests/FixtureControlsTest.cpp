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

}  // namespace
}  // namespace dmx
