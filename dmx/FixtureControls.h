// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "dmx/fixture.h"
#include "dmx/ports/DmxInterface.h"

namespace dmx {

// Channels are numbered from 1.

/// The channels that mix a fixture's colour.
struct ColourChannels {
  std::vector<int> red;
  std::vector<int> green;
  std::vector<int> blue;

  /// All three are there.
  [[nodiscard]] bool Mix() const { return !red.empty() && !green.empty() && !blue.empty(); }
};
[[nodiscard]] ColourChannels ColourChannelsOf(const ChannelSlider& channels);

/// The first channel of the function; 0 without any.
[[nodiscard]] int FirstChannel(const ChannelSlider& channels, ChannelFunction function);

/// The channels of pan or tilt. What lies between two levels of the coarse one is the fine one's, which its
/// label tells: "Pan fine".
struct AxisChannels {
  int coarse = 0;  ///< 0: there is none
  int fine = 0;
};
[[nodiscard]] AxisChannels AxisChannelsOf(const ChannelSlider& channels, ChannelFunction axis);

/// Levels of an axis at a place from 0 to 1.
struct AxisLevels {
  DmxLevel coarse = 0;
  DmxLevel fine = 0;
  bool operator==(const AxisLevels&) const = default;
};
[[nodiscard]] AxisLevels LevelsAt(const AxisChannels& axis, double place);
[[nodiscard]] double PlaceOf(const AxisChannels& axis, const AxisLevels& levels);

/// The channels in the order in which a hand looks for them: light, colour, gobo, direction, the rest.
[[nodiscard]] std::vector<int> FaderOrder(const ChannelSlider& channels);

/// The channel of another fixture that does the same: of the same function, label and rank among them; 0
/// without any.
[[nodiscard]] int SameChannel(const ChannelSlider& channels, int channel, const ChannelSlider& others);

}  // namespace dmx
