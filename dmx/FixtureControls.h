// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "dmx/fixture.h"

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

/// The channels in the order in which a hand looks for them: light, colour, gobo, direction, the rest.
[[nodiscard]] std::vector<int> FaderOrder(const ChannelSlider& channels);

/// The channel of another fixture that does the same: of the same function, label and rank among them; 0
/// without any.
[[nodiscard]] int SameChannel(const ChannelSlider& channels, int channel, const ChannelSlider& others);

}  // namespace dmx
