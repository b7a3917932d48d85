// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/LiveLook.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "dmx/FixtureControls.h"
#include "support/Text.h"

namespace dmx {
namespace {

constexpr std::array<MixedColour, kMixedColours> kMixed{{{255, 0, 0},
                                                         {255, 90, 0},
                                                         {255, 200, 0},
                                                         {0, 255, 0},
                                                         {0, 220, 255},
                                                         {0, 0, 255},
                                                         {140, 0, 255},
                                                         {255, 0, 160},
                                                         {255, 255, 255},
                                                         {255, 170, 80}}};
constexpr MixedColour kWhite{255, 255, 255};
constexpr std::size_t kMostColours = 20;  ///< of a palette
constexpr std::size_t kMostGobos = 100;

bool IsDimmer(const FixtureChannel& channel) {
  return channel.function == ChannelFunction::Dimmer && !ColourNamed(channel.label);
}

bool IsWheel(const FixtureChannel& channel) {
  return channel.function == ChannelFunction::Color && !ColourNamed(channel.label) &&
         channel.presets.count() > 0;
}

DmxLevel LevelAt(double share) {
  return static_cast<DmxLevel>(std::lround(std::clamp(share, 0.0, 1.0) * kHighestLevel));
}

DmxLevel Within(int level) {
  return static_cast<DmxLevel>(std::clamp(level, 0, kHighestLevel));
}

const presets* FirstOf(const FixtureChannel& channel, PresetEffect effect) {
  const auto found = std::find_if(channel.presets.begin(), channel.presets.end(),
                                  [effect](const presets& preset) { return preset.Effect == effect; });
  return found == channel.presets.end() ? nullptr : &*found;
}

/// A wheel's place without a colour is white.
std::optional<MixedColour> ColourOfPreset(const presets& preset) {
  if (const auto named = ColourNamed(preset.name)) return MixedColour{named->red, named->green, named->blue};
  if (preset.Effect == PresetEffect::Open || support::ToUpper(preset.name).starts_with("OPEN")) return kWhite;
  return std::nullopt;
}

int Distance(const MixedColour& a, const MixedColour& b) {
  const int red = a.red - b.red, green = a.green - b.green, blue = a.blue - b.blue;
  return red * red + green * green + blue * blue;
}

const presets* NearestOf(const FixtureChannel& wheel, const MixedColour& colour) {
  const presets* nearest = nullptr;
  int least = 0;
  for (const presets& preset : wheel.presets) {
    const auto its = ColourOfPreset(preset);
    if (!its) continue;
    if (nearest != nullptr && Distance(*its, colour) >= least) continue;
    nearest = &preset;
    least = Distance(*its, colour);
  }
  return nearest;
}

/// Puts a fixture's faders in the moves.
class Mover {
 public:
  Mover(std::vector<FaderMove>& moves, const DMXfilename& fixture)
      : moves_(moves), fixture_(fixture), can_(AbilitiesOf(fixture)) {}

  void Light(double light) {
    Each([&](const FixtureChannel& channel, int number) {
      if (IsDimmer(channel)) Add(number, LevelAt(light));
      if (channel.function == ChannelFunction::Shutter) Add(number, ShutterAt(channel, light));
    });
  }
  /// light: falls on the colour where nothing else dims.
  void Colour(const MixedColour& colour, double light) {
    const double share = can_.dims ? 1 : std::clamp(light, 0.0, 1.0);
    const auto of = [share](int level) { return static_cast<DmxLevel>(std::lround(level * share)); };
    Each([&](const FixtureChannel& channel, int number) {
      if (IsWheel(channel) && !can_.mixes) {
        if (const presets* nearest = NearestOf(channel, colour)) Add(number, Within(nearest->StartLevel));
        return;
      }
      const bool mixing =
          channel.function == ChannelFunction::Color || channel.function == ChannelFunction::Dimmer;
      if (!mixing || !ColourNamed(channel.label)) return;
      const std::string label = support::ToUpper(channel.label);
      if (label.starts_with("RED")) return Add(number, of(colour.red));
      if (label.starts_with("GREEN")) return Add(number, of(colour.green));
      if (label.starts_with("BLUE")) return Add(number, of(colour.blue));
      // A lamp of another colour helps where the colour is white, and is dark else.
      Add(number, label.starts_with("WHITE") && colour == kWhite ? of(kHighestLevel) : DmxLevel{0});
    });
  }
  void Gobo(const std::string& name) {
    Each([&](const FixtureChannel& channel, int number) {
      if (channel.function != ChannelFunction::Gobo) return;
      for (const presets& preset : channel.presets) {
        if (preset.name == name) return Add(number, Within(preset.StartLevel));
      }
    });
  }
  void All(ChannelFunction function, double share) {
    Each([&](const FixtureChannel& channel, int number) {
      if (channel.function == function) Add(number, LevelAt(share));
    });
  }
  void Axis(ChannelFunction function, double place) {
    const AxisChannels axis = AxisChannelsOf(fixture_.Channels, function);
    const AxisLevels levels = LevelsAt(axis, place);
    if (axis.coarse != 0) Add(axis.coarse, levels.coarse);
    if (axis.fine != 0) Add(axis.fine, levels.fine);
  }

  void Add(int channel, DmxLevel level) {
    const int on_the_wire = fixture_.StartChannel + channel - 1;
    if (on_the_wire >= 1 && on_the_wire <= kUniverseChannels) moves_.push_back({on_the_wire, level});
  }
  [[nodiscard]] bool Mixes() const { return can_.mixes; }
  [[nodiscard]] bool Dims() const { return can_.dims; }

 private:
  template <typename Do>
  void Each(const Do& act) {
    int number = 0;
    for (const FixtureChannel& channel : fixture_.Channels) act(channel, ++number);
  }
  [[nodiscard]] DmxLevel ShutterAt(const FixtureChannel& channel, double light) const {
    const presets* open = FirstOf(channel, PresetEffect::Open);
    const presets* closed = FirstOf(channel, PresetEffect::Closed);
    const bool dark = light <= 0 && !can_.dims && !can_.mixes;
    if (dark) return closed != nullptr ? Within(closed->StartLevel) : DmxLevel{0};
    if (open != nullptr) return Within(open->StartLevel);
    if (channel.presets.count() == 0 && !can_.dims && !can_.mixes) return LevelAt(light);
    return kHighestLevel;
  }

  std::vector<FaderMove>& moves_;
  const DMXfilename& fixture_;
  LiveAbilities can_;
};

}  // namespace

LiveAbilities AbilitiesOf(const DMXfilename& fixture) {
  LiveAbilities can;
  can.mixes = ColourChannelsOf(fixture.Channels).Mix();
  for (const FixtureChannel& channel : fixture.Channels) {
    can.dims = can.dims || IsDimmer(channel);
    can.wheel = can.wheel || IsWheel(channel);
    can.shutter = can.shutter || channel.function == ChannelFunction::Shutter;
    can.gobo = can.gobo || (channel.function == ChannelFunction::Gobo && channel.presets.count() > 0);
    can.gobo_rotation = can.gobo_rotation || channel.function == ChannelFunction::GoboRotation;
    can.speed = can.speed || channel.function == ChannelFunction::PanTiltSpeed;
    can.moves =
        can.moves || channel.function == ChannelFunction::Pan || channel.function == ChannelFunction::Tilt;
  }
  return can;
}

void AddMoves(std::vector<FaderMove>& moves, const DMXfilename& fixture, const LiveLook& look) {
  Mover mover(moves, fixture);
  if (look.light) mover.Light(*look.light);
  const bool light_is_colour = look.light && mover.Mixes() && !mover.Dims();
  if (look.colour || light_is_colour) mover.Colour(look.colour.value_or(kWhite), look.light.value_or(1));
  if (look.gobo) mover.Gobo(*look.gobo);
  if (look.gobo_rotation) mover.All(ChannelFunction::GoboRotation, *look.gobo_rotation);
  if (look.speed) mover.All(ChannelFunction::PanTiltSpeed, *look.speed);
  if (look.pan) mover.Axis(ChannelFunction::Pan, *look.pan);
  if (look.tilt) mover.Axis(ChannelFunction::Tilt, *look.tilt);
}

std::vector<FaderMove> StrobeMoves(const DMXfilename& fixture) {
  std::vector<FaderMove> moves;
  Mover mover(moves, fixture);
  int number = 0;
  for (const FixtureChannel& channel : fixture.Channels) {
    ++number;
    if (channel.function != ChannelFunction::Shutter) continue;
    if (const presets* strobe = FirstOf(channel, PresetEffect::Strobe))
      mover.Add(number, Within((strobe->StartLevel + strobe->EndLevel) / 2));
  }
  return moves;
}

SharedLook Share(const DMXfilename& fixture, const LiveLook& hand, const LiveLook& effect) {
  SharedLook shared{hand, effect};
  if (effect.light) shared.effect.light = *effect.light * hand.light.value_or(1);
  const LiveAbilities can = AbilitiesOf(fixture);
  if (can.mixes && !can.dims && (effect.light || effect.colour)) {
    if (!effect.light) shared.effect.light = hand.light.value_or(1);
    if (!effect.colour) shared.effect.colour = hand.colour.value_or(kWhite);
  }
  if (shared.effect.light) shared.hand.light.reset();
  if (shared.effect.colour) shared.hand.colour.reset();
  if (effect.pan) shared.hand.pan.reset();
  if (effect.tilt) shared.hand.tilt.reset();
  return shared;
}

ChannelSet DimmersOf(const DMXname& fixtures) {
  ChannelSet dimmers;
  for (const DMXfilename& fixture : fixtures) {
    int place = fixture.StartChannel - 1;
    for (const FixtureChannel& channel : fixture.Channels) {
      if (place >= 0 && place < kUniverseChannels && IsDimmer(channel))
        dimmers.set(static_cast<std::size_t>(place));
      ++place;
    }
  }
  return dimmers;
}

std::span<const MixedColour, kMixedColours> MixedColours() {
  return kMixed;
}

std::vector<PaletteColour> PaletteOf(const DMXname& fixtures, std::span<const int> of) {
  constexpr int kAlike = 70 * 70;
  std::vector<PaletteColour> palette;
  const auto can_mix = [&](int position) {
    const DMXfilename* fixture = fixtures.Item(position);
    return fixture != nullptr && AbilitiesOf(*fixture).mixes;
  };
  if (std::any_of(of.begin(), of.end(), can_mix)) {
    for (const MixedColour& colour : kMixed) palette.push_back({colour, {}});
  }
  for (const int position : of) {
    const DMXfilename* fixture = fixtures.Item(position);
    if (fixture == nullptr || can_mix(position)) continue;
    for (const FixtureChannel& channel : fixture->Channels) {
      if (!IsWheel(channel)) continue;
      for (const presets& preset : channel.presets) {
        const auto colour = ColourOfPreset(preset);
        const bool seen = !colour || std::any_of(palette.begin(), palette.end(), [&](const auto& other) {
          return Distance(other.colour, *colour) < kAlike;
        });
        if (!seen && palette.size() < kMostColours) palette.push_back({*colour, preset.name});
      }
    }
  }
  return palette;
}

std::vector<std::string> GobosOf(const DMXname& fixtures, std::span<const int> of) {
  std::vector<std::string> names;
  for (const int position : of) {
    const DMXfilename* fixture = fixtures.Item(position);
    if (fixture == nullptr) continue;
    for (const FixtureChannel& channel : fixture->Channels) {
      if (channel.function != ChannelFunction::Gobo) continue;
      for (const presets& preset : channel.presets) {
        const bool seen = std::find(names.begin(), names.end(), preset.name) != names.end();
        if (!seen && !preset.name.empty() && names.size() < kMostGobos) names.push_back(preset.name);
      }
    }
  }
  return names;
}

}  // namespace dmx
