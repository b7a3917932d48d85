// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/cLights.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "support/Text.h"

namespace dmx {
namespace {

using LevelView = std::span<const DmxLevel, kUniverseChannels>;

struct NamedColour {
  std::string_view name;
  LightColour colour;
};
/// By the start of a channel's label or a preset's name.
constexpr std::array<NamedColour, 14> kNamed{{{"RED", {255, 0, 0}},
                                              {"GREEN", {0, 255, 0}},
                                              {"BLUE", {0, 0, 255}},
                                              {"WHITE", {255, 255, 255}},
                                              {"AMBER", {255, 160, 0}},
                                              {"UV", {90, 0, 255}},
                                              {"ORANGE", {255, 110, 0}},
                                              {"YELLOW", {255, 230, 0}},
                                              {"CYAN", {0, 220, 255}},
                                              {"LIGHT BLUE", {110, 190, 255}},
                                              {"MAGENTA", {255, 0, 200}},
                                              {"PINK", {255, 90, 160}},
                                              {"VIOLET", {140, 0, 255}},
                                              {"PURPLE", {140, 0, 255}}}};

std::uint8_t Share(int of, int level) {
  return static_cast<std::uint8_t>(std::clamp(of, 0, kHighestLevel) * level / kHighestLevel);
}

/// What a fixture's channels add up to.
class Mix {
 public:
  void Take(const FixtureChannel& channel, int level) {
    const auto colour = ColourNamed(channel.label);
    if (channel.function == ChannelFunction::Dimmer && !colour) dimmer_ = dimmer_ * level / kHighestLevel;
    if (channel.function == ChannelFunction::Shutter && IsClosed(channel, level)) open_ = false;
    const bool mixes =
        channel.function == ChannelFunction::Dimmer || channel.function == ChannelFunction::Color;
    if (mixes && colour) Add(*colour, level);
    if (channel.function == ChannelFunction::Color && !colour) TakeWheel(channel, level);
  }

  [[nodiscard]] LightColour Colour() const {
    const int light = open_ ? dimmer_ : 0;
    if (!mixed_) return {Share(wheel_.red, light), Share(wheel_.green, light), Share(wheel_.blue, light)};
    return {Share(red_, light), Share(green_, light), Share(blue_, light)};
  }

 private:
  static bool IsClosed(const FixtureChannel& channel, int level) {
    for (const presets& preset : channel.presets) {
      if (preset.Holds(level)) return preset.Effect == PresetEffect::Closed;
    }
    return level == 0;
  }
  void Add(LightColour colour, int level) {
    mixed_ = true;
    red_ += colour.red * level / kHighestLevel;
    green_ += colour.green * level / kHighestLevel;
    blue_ += colour.blue * level / kHighestLevel;
  }
  void TakeWheel(const FixtureChannel& channel, int level) {
    for (const presets& preset : channel.presets) {
      if (preset.Holds(level)) wheel_ = ColourNamed(preset.name).value_or(wheel_);
    }
  }

  int dimmer_ = kHighestLevel;
  bool open_ = true;
  bool mixed_ = false;
  int red_ = 0;
  int green_ = 0;
  int blue_ = 0;
  LightColour wheel_{255, 255, 255};
};

/// The level of the fixture's channel; 0 beyond the universe.
int LevelOn(const DMXfilename& fixture, int channel, LevelView levels) {
  const int place = fixture.StartChannel + channel - 2;
  return place < 0 || place >= kUniverseChannels ? 0 : levels[static_cast<std::size_t>(place)];
}

/// Where the first channel of the function stands, 0 to 1; in the middle without one.
double Standing(const DMXfilename& fixture, ChannelFunction function, LevelView levels) {
  int number = 0;
  for (const FixtureChannel& channel : fixture.Channels) {
    ++number;
    if (channel.function == function) return LevelOn(fixture, number, levels) / 255.0;
  }
  return 0.5;
}

}  // namespace

std::optional<LightColour> ColourNamed(std::string_view text) {
  const std::string upper = support::ToUpper(text);
  for (const NamedColour& named : kNamed) {
    if (upper.starts_with(named.name)) return named.colour;
  }
  return std::nullopt;
}

void cLight::DrawLight(Surface& surface) const {
  const int discs = std::max(Steps, 1);
  for (int disc = 1; disc <= discs; ++disc) {
    const int light = kHighestLevel * disc / discs;
    surface.FillDisc(X, Y, Radius * (discs - disc + 1) / discs,
                     {Share(Red, light), Share(Green, light), Share(Blue, light)});
  }
}

LightColour ColourOf(const DMXfilename& fixture, LevelView levels) {
  if (fixture.Channels.count() == 0) return {};
  Mix mix;
  int number = 0;
  for (const FixtureChannel& channel : fixture.Channels)
    mix.Take(channel, LevelOn(fixture, ++number, levels));
  return mix.Colour();
}

cLights PreviewLights(const DMXname& fixtures, LevelView levels, double width, double height) {
  constexpr double kDisc = 0.45;  // of the part's smaller side
  constexpr int kDiscs = 24;
  cLights lights;
  const double part = width / std::max(fixtures.count(), 1);
  const double radius = kDisc * std::min(part, height);
  int number = 0;
  for (const DMXfilename& fixture : fixtures) {
    const LightColour colour = ColourOf(fixture, levels);
    const double x =
        part * number + radius + (part - 2 * radius) * Standing(fixture, ChannelFunction::Pan, levels);
    const double y = radius + (height - 2 * radius) * Standing(fixture, ChannelFunction::Tilt, levels);
    lights.Add({++number, x, y, colour.red, colour.green, colour.blue, radius, kDiscs});
  }
  return lights;
}

}  // namespace dmx
