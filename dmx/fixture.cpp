// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/fixture.h"

#include <algorithm>

#include "dmx/ports/DmxInterface.h"

namespace dmx {

void SetChannelCount(Fixture& fixture, int count) {
  count = std::clamp(count, 0, kUniverseChannels);
  while (fixture.channels.count() < count) fixture.channels.Add();
  while (fixture.channels.count() > count) fixture.channels.Remove(fixture.channels.count());
}

std::string_view FunctionText(ChannelFunction function) {
  constexpr std::array<std::string_view, kChannelFunctions> kTexts{
      "Free",           "Pan",  "Tilt",          "Dimmer",        "Shutter", "Color",
      "Color Rotation", "Gobo", "Gobo Rotation", "Pan/Tilt Speed"};
  const auto index = static_cast<std::size_t>(function);
  return index < kTexts.size() ? kTexts[index] : std::string_view();
}

std::string_view TypeText(FixtureType type) {
  switch (type) {
    case FixtureType::MovingHead:
      return "Moving Head";
    case FixtureType::Scanner:
      return "Scanner";
    case FixtureType::ColorChanger:
      return "Color Changer";
    case FixtureType::None:
      break;
  }
  return {};
}

std::string RangeText(const presets& preset) {
  return std::to_string(preset.StartLevel) + " --> " + std::to_string(preset.EndLevel);
}

}  // namespace dmx
