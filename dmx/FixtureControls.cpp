// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/FixtureControls.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "support/Text.h"

namespace dmx {
namespace {

/// By function index.
constexpr std::array<int, kChannelFunctions> kRanks{9, 6, 7, 0, 1, 2, 3, 4, 5, 8};

int RankOf(ChannelFunction function) {
  return kRanks.at(static_cast<std::size_t>(function));
}

bool DoSame(const FixtureChannel& a, const FixtureChannel& b) {
  return a.function == b.function && support::ToUpper(a.label) == support::ToUpper(b.label);
}

}  // namespace

ColourChannels ColourChannelsOf(const ChannelSlider& channels) {
  ColourChannels colour;
  int number = 0;
  for (const FixtureChannel& channel : channels) {
    ++number;
    const bool mixes =
        channel.function == ChannelFunction::Dimmer || channel.function == ChannelFunction::Color;
    if (!mixes) continue;
    const std::string label = support::ToUpper(channel.label);
    if (label.starts_with("RED")) colour.red.push_back(number);
    if (label.starts_with("GREEN")) colour.green.push_back(number);
    if (label.starts_with("BLUE")) colour.blue.push_back(number);
  }
  return colour;
}

int FirstChannel(const ChannelSlider& channels, ChannelFunction function) {
  const auto found =
      std::find_if(channels.begin(), channels.end(),
                   [function](const FixtureChannel& channel) { return channel.function == function; });
  return found == channels.end() ? 0 : static_cast<int>(found - channels.begin()) + 1;
}

std::vector<int> FaderOrder(const ChannelSlider& channels) {
  std::vector<int> order(static_cast<std::size_t>(channels.count()));
  std::iota(order.begin(), order.end(), 1);
  std::stable_sort(order.begin(), order.end(), [&channels](int a, int b) {
    return RankOf(channels.Item(a)->function) < RankOf(channels.Item(b)->function);
  });
  return order;
}

int SameChannel(const ChannelSlider& channels, int channel, const ChannelSlider& others) {
  const FixtureChannel* wanted = channels.Item(channel);
  if (wanted == nullptr) return 0;
  const auto before = channels.begin() + (channel - 1);
  auto rank = std::count_if(channels.begin(), before,
                            [wanted](const FixtureChannel& other) { return DoSame(other, *wanted); });
  int number = 0;
  for (const FixtureChannel& other : others) {
    ++number;
    if (DoSame(other, *wanted) && rank-- == 0) return number;
  }
  return 0;
}

}  // namespace dmx
