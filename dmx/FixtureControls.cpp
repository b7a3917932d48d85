// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/FixtureControls.h"

#include <algorithm>
#include <array>
#include <cmath>
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

/// A fine channel that is described as a free one has to name the axis too.
bool IsFine(const FixtureChannel& channel, ChannelFunction axis) {
  const std::string label = support::ToUpper(channel.label);
  const auto says = [&label](std::string_view word) { return label.find(word) != std::string::npos; };
  if (!says("FINE") && !says("FIJN")) return false;
  return channel.function == axis ||
         (channel.function == ChannelFunction::Free && says(axis == ChannelFunction::Pan ? "PAN" : "TILT"));
}

constexpr int kFineSteps = 256;
constexpr int kHighestPlace = kFineSteps * kFineSteps - 1;

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

AxisChannels AxisChannelsOf(const ChannelSlider& channels, ChannelFunction axis) {
  AxisChannels found;
  int number = 0;
  for (const FixtureChannel& channel : channels) {
    ++number;
    const bool fine = IsFine(channel, axis);
    if (fine && found.fine == 0) found.fine = number;
    if (!fine && channel.function == axis && found.coarse == 0) found.coarse = number;
  }
  if (found.coarse == 0) found = {FirstChannel(channels, axis), 0};
  return found;
}

AxisLevels LevelsAt(const AxisChannels& axis, double place) {
  const double within = std::clamp(place, 0.0, 1.0);
  if (axis.fine == 0) return {static_cast<DmxLevel>(std::lround(within * kHighestLevel)), 0};
  const long steps = std::lround(within * kHighestPlace);
  return {static_cast<DmxLevel>(steps / kFineSteps), static_cast<DmxLevel>(steps % kFineSteps)};
}

double PlaceOf(const AxisChannels& axis, const AxisLevels& levels) {
  if (axis.fine == 0) return double(levels.coarse) / kHighestLevel;
  return double(levels.coarse * kFineSteps + levels.fine) / kHighestPlace;
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
