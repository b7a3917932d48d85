// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "dmx/cLights.h"

namespace dmx {
namespace {

class LightsTest : public ::testing::Test {
 protected:
  using F = ChannelFunction;
  /// A fixture from channel 3 on.
  void Fixture(std::vector<FixtureChannel> channels) {
    fixtures_ = {};
    DMXfilename& fixture = fixtures_.Add();
    fixture.StartChannel = 3;
    for (FixtureChannel& channel : channels) fixture.Channels.Add(std::move(channel));
  }
  LightColour At(const std::vector<int>& levels) {
    for (std::size_t i = 0; i < levels.size(); ++i) levels_.at(i + 2) = static_cast<DmxLevel>(levels[i]);
    return ColourOf(*fixtures_.Item(1), levels_);
  }
  static FixtureChannel WithPreset(F function, PresetEffect effect, const char* name, int start, int end) {
    FixtureChannel channel{function, "Wheel", {}};
    channel.presets.Add({effect, 0, name, start, end, "", "", 1});
    return channel;
  }

  DMXname fixtures_;
  std::array<DmxLevel, kUniverseChannels> levels_{};
};

TEST_F(LightsTest, ColoursMixUnderTheDimmer) {
  Fixture({{F::Dimmer, "Dimmer", {}}, {F::Color, "Red", {}}, {F::Color, "White 1", {}}});
  EXPECT_EQ(At({255, 200, 0}), (LightColour{200, 0, 0}));
  EXPECT_EQ(At({255, 200, 100}), (LightColour{255, 100, 100}));
  EXPECT_EQ(At({51, 255, 0}), (LightColour{51, 0, 0}));
}

TEST_F(LightsTest, DimmersOfTheirOwnColourMixToo) {
  Fixture({{F::Dimmer, "Red", {}}, {F::Dimmer, "Green", {}}, {F::Dimmer, "Blue", {}}});
  EXPECT_EQ(At({10, 20, 30}), (LightColour{10, 20, 30}));
}

TEST_F(LightsTest, AWheelShowsTheColourThatItsPresetIsNamedAfterAndAShutterHidesIt) {
  Fixture({WithPreset(F::Color, PresetEffect::None, "light blue", 10, 20),
           WithPreset(F::Shutter, PresetEffect::Closed, "", 5, 9)});
  EXPECT_EQ(At({0, 255}), (LightColour{255, 255, 255}));
  EXPECT_EQ(At({15, 255}), (LightColour{110, 190, 255}));
  for (const int closed : {0, 5, 9}) EXPECT_EQ(At({15, closed}), LightColour()) << closed;
}

TEST_F(LightsTest, LightsStandSideBySideAndFollowPanAndTilt) {
  Fixture({{F::Pan, "", {}}, {F::Tilt, "", {}}});
  fixtures_.Add();
  At({255, 0});
  const cLights lights = PreviewLights(fixtures_, levels_, 200, 100);
  ASSERT_EQ(lights.count(), 2);
  EXPECT_DOUBLE_EQ(lights.Item(1)->X, 55);
  EXPECT_DOUBLE_EQ(lights.Item(1)->Y, 45);
  EXPECT_DOUBLE_EQ(lights.Item(2)->X, 150);
  EXPECT_EQ(lights.Item(2)->Red, 0);
}

TEST_F(LightsTest, ALightIsPaintedFromItsRimInwards) {
  struct Painted final : Surface {
    void FillDisc(double, double, double radius, LightColour colour) override {
      discs.emplace_back(radius, colour.red);
    }
    std::vector<std::pair<double, int>> discs;
  } surface;
  cLight{1, 5, 5, 200, 0, 0, 30, 2}.DrawLight(surface);
  EXPECT_EQ(surface.discs, (std::vector<std::pair<double, int>>{{30, 99}, {15, 200}}));
}

}  // namespace
}  // namespace dmx
