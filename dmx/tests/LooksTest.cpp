// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/Looks.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "dmx/testing/RecordingDmxInterface.h"

namespace dmx {
namespace {

TEST(LooksTest, ALookKeepsWhatItCameFrom) {
  std::array<DmxLevel, kUniverseChannels> levels{};
  levels[6] = 10;
  levels[511] = 255;
  const std::vector channels{7, 512};
  const SceneChannel first = RecordLook(levels, channels, nullptr);
  EXPECT_EQ(*first.Item(1), (Sliders{10, 10, 0, true}));
  levels[6] = 4;
  const SceneChannel second = RecordLook(levels, channels, &first);
  EXPECT_EQ(*second.Item(1), (Sliders{4, -6, 10, true}));
  EXPECT_EQ(*second.Item(2), (Sliders{255, 0, 255, false}));
}

TEST(LooksTest, ALookIsShownOnTheFadersOfItsChannels) {
  testing::RecordingDmxInterface wire;
  Universe universe(wire);
  SceneChannel look;
  for (const int level : {1, 300, 3}) look.Add().ChannelValue = static_cast<std::int16_t>(level);
  ShowLook(look, std::vector{9, 5}, universe);
  EXPECT_EQ(wire.TakeCalls(), (std::vector<std::string>{"SetData 9 1", "SetData 5 255"}));
}

}  // namespace
}  // namespace dmx
