// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "dmx/show.h"

namespace dmx::testing {

inline FixtureChannel ChannelOf(ChannelFunction function, std::string label = {}) {
  return {function, std::move(label), {}};
}

inline FixtureChannel& AddPreset(FixtureChannel& channel, PresetEffect effect, std::string name, int first,
                                 int last) {
  presets& preset = channel.presets.Add();
  preset.Effect = effect;
  preset.name = std::move(name);
  preset.StartLevel = first;
  preset.EndLevel = last;
  return channel;
}

/// Red, green and blue from the channel on, without a dimmer.
inline void AddRgbPar(DMXname& fixtures, int start) {
  DMXfilename& par = fixtures.Add();
  par.Filename = "C:\\DMXlibrary\\Par.dmx";
  par.StartChannel = static_cast<std::int16_t>(start);
  for (const char* label : {"Red", "Green", "Blue"})
    par.Channels.Add() = ChannelOf(ChannelFunction::Color, label);
}

/// From the channel on: pan, tilt, dimmer, shutter (closed to 9, strobe to 199, open above), a wheel of
/// white, red and blue, and gobos.
inline void AddHead(DMXname& fixtures, int start) {
  DMXfilename& head = fixtures.Add();
  head.Filename = "C:\\DMXlibrary\\Head.dmx";
  head.StartChannel = static_cast<std::int16_t>(start);
  head.Channels.Add() = ChannelOf(ChannelFunction::Pan);
  head.Channels.Add() = ChannelOf(ChannelFunction::Tilt);
  head.Channels.Add() = ChannelOf(ChannelFunction::Dimmer);
  FixtureChannel& shutter = head.Channels.Add() = ChannelOf(ChannelFunction::Shutter);
  AddPreset(shutter, PresetEffect::Closed, "Closed", 0, 9);
  AddPreset(shutter, PresetEffect::Strobe, "Strobe", 10, 199);
  AddPreset(shutter, PresetEffect::Open, "Open", 200, 255);
  FixtureChannel& wheel = head.Channels.Add() = ChannelOf(ChannelFunction::Color);
  AddPreset(wheel, PresetEffect::None, "White", 0, 9);
  AddPreset(wheel, PresetEffect::None, "Red", 10, 19);
  AddPreset(wheel, PresetEffect::None, "Blue", 20, 255);
  FixtureChannel& gobo = head.Channels.Add() = ChannelOf(ChannelFunction::Gobo);
  AddPreset(gobo, PresetEffect::None, "Open", 0, 9);
  AddPreset(gobo, PresetEffect::None, "Stars", 10, 255);
}

}  // namespace dmx::testing
