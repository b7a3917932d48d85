// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/FaderMoves.h"

#include <gtest/gtest.h>

namespace dmx {
namespace {

using Function = ChannelFunction;
using Moves = std::vector<FaderMove>;

/// A bar from channel 1, a head from 10 and a bar whose last channels lie beyond the universe.
class FaderMovesTest : public ::testing::Test {
 protected:
  FaderMovesTest() {
    const std::vector<std::pair<Function, const char*>> bar = {
        {Function::Dimmer, "Red"}, {Function::Dimmer, "Green"}, {Function::Color, "Blue"}};
    Add(1, bar);
    Add(10, {{Function::Pan, "Pan"},
             {Function::Tilt, "Tilt"},
             {Function::Dimmer, "Green"},
             {Function::Free, "Pan fine"}});
    Add(511, bar);
  }
  void Add(int start, const std::vector<std::pair<Function, const char*>>& channels) {
    DMXfilename fixture;
    fixture.StartChannel = static_cast<std::int16_t>(start);
    for (const auto& [function, label] : channels) fixture.Channels.Add({function, label, {}});
    fixtures_.Add(fixture);
  }
  DMXname fixtures_;
  const std::vector<int> all_{1, 2, 3};
};

TEST_F(FaderMovesTest, ALevelGoesToTheSameChannelOfTheOthers) {
  EXPECT_EQ(MovesOfLevel(fixtures_, all_, 1, 2, 40), (Moves{{2, 40}, {12, 40}, {512, 40}}));
  EXPECT_EQ(MovesOfLevel(fixtures_, all_, 1, 1, 7), (Moves{{1, 7}, {511, 7}}));
  EXPECT_EQ(MovesOfLevel(fixtures_, std::vector{2}, 2, 4, 7), (Moves{{13, 7}}));
}

TEST_F(FaderMovesTest, AColourGoesToWhatMixesItWithinTheUniverse) {
  EXPECT_EQ(MovesOfColour(fixtures_, all_, {255, 128, 3}),
            (Moves{{1, 255}, {2, 128}, {3, 3}, {12, 128}, {511, 255}, {512, 128}}));
}

TEST_F(FaderMovesTest, ADirectionGoesToHeadsAlone) {
  EXPECT_EQ(MovesOfDirection(fixtures_, all_, 0.501, 1), (Moves{{10, 128}, {13, 65}, {11, 255}}));
}

}  // namespace
}  // namespace dmx
