// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/FaderMoves.h"

#include "dmx/FixtureControls.h"

namespace dmx {
namespace {

void Add(std::vector<FaderMove>& moves, const DMXfilename& fixture, int channel, DmxLevel level) {
  const int on_the_wire = fixture.StartChannel + channel - 1;
  if (channel < 1 || on_the_wire < 1 || on_the_wire > kUniverseChannels) return;
  moves.push_back({on_the_wire, level});
}

void AddAxis(std::vector<FaderMove>& moves, const DMXfilename& fixture, ChannelFunction function, double to) {
  const AxisChannels axis = AxisChannelsOf(fixture.Channels, function);
  const AxisLevels levels = LevelsAt(axis, to);
  Add(moves, fixture, axis.coarse, levels.coarse);
  Add(moves, fixture, axis.fine, levels.fine);
}

}  // namespace

std::vector<FaderMove> MovesOfLevel(const DMXname& fixtures, std::span<const int> together, int position,
                                    int channel, DmxLevel level) {
  std::vector<FaderMove> moves;
  const ChannelSlider& moved = fixtures.Item(position)->Channels;
  for (const int other : together) {
    const DMXfilename& fixture = *fixtures.Item(other);
    const int same = other == position ? channel : SameChannel(moved, channel, fixture.Channels);
    Add(moves, fixture, same, level);
  }
  return moves;
}

std::vector<FaderMove> MovesOfColour(const DMXname& fixtures, std::span<const int> together,
                                     const MixedColour& colour) {
  std::vector<FaderMove> moves;
  for (const int position : together) {
    const DMXfilename& fixture = *fixtures.Item(position);
    const ColourChannels mix = ColourChannelsOf(fixture.Channels);
    for (const int channel : mix.red) Add(moves, fixture, channel, colour.red);
    for (const int channel : mix.green) Add(moves, fixture, channel, colour.green);
    for (const int channel : mix.blue) Add(moves, fixture, channel, colour.blue);
  }
  return moves;
}

std::vector<FaderMove> MovesOfDirection(const DMXname& fixtures, std::span<const int> together, double pan,
                                        double tilt) {
  std::vector<FaderMove> moves;
  for (const int position : together) {
    AddAxis(moves, *fixtures.Item(position), ChannelFunction::Pan, pan);
    AddAxis(moves, *fixtures.Item(position), ChannelFunction::Tilt, tilt);
  }
  return moves;
}

}  // namespace dmx
