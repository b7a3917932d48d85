// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "dmx/FaderMoves.h"
#include "dmx/LightLayers.h"
#include "dmx/cLights.h"
#include "dmx/show.h"

namespace dmx {

/// What a hand or an effect wants of a fixture, whichever channels that takes.
struct LiveLook {
  std::optional<double> light;  ///< 0 to 1, as all numbers here
  std::optional<MixedColour> colour;
  std::optional<std::string> gobo;  ///< name of a preset
  std::optional<double> gobo_rotation;
  std::optional<double> speed;  ///< of pan and tilt, as the channel has it
  std::optional<double> pan;
  std::optional<double> tilt;

  bool operator==(const LiveLook&) const = default;
};

/// What can be asked of a fixture live. What it has no channel for is left out of every look.
struct LiveAbilities {
  bool dims = false;   ///< by channels of its own
  bool mixes = false;  ///< its colour, and with it the light where it does not dim
  bool wheel = false;
  bool shutter = false;
  bool gobo = false;
  bool gobo_rotation = false;
  bool speed = false;
  bool moves = false;
};
[[nodiscard]] LiveAbilities AbilitiesOf(const DMXfilename& fixture);

/// Appends the faders of the fixture that the look takes. Light opens the shutter; where nothing dims it
/// falls on the mixed colour, without one on the shutter. A colour that cannot be mixed is the nearest on a
/// wheel.
void AddMoves(std::vector<FaderMove>& moves, const DMXfilename& fixture, const LiveLook& look);

/// Faders that flash by the fixture's own strobe; none where no preset of its shutter does.
[[nodiscard]] std::vector<FaderMove> StrobeMoves(const DMXfilename& fixture);

/// A hand and an effect at one fixture: what of it stays the hand's, and what is the effect's. The hand's
/// light is the most that an effect lights it.
struct SharedLook {
  LiveLook hand;
  LiveLook effect;
};
[[nodiscard]] SharedLook Share(const DMXfilename& fixture, const LiveLook& hand, const LiveLook& effect);

/// Channels on which the higher level counts: those that dim and are no colour of a mixture.
[[nodiscard]] ChannelSet DimmersOf(const DMXname& fixtures);

/// A colour to choose from. name: of a wheel's preset; empty for the mixed ones.
struct PaletteColour {
  MixedColour colour;
  std::string name;
  bool operator==(const PaletteColour&) const = default;
};
/// Eight colours, white and warm white, in this order.
inline constexpr std::size_t kMixedColours = 10;
[[nodiscard]] std::span<const MixedColour, kMixedColours> MixedColours();

/// What these fixtures, told by their positions from 1, can show: the mixed colours where one of them mixes,
/// and behind them what wheels have besides.
[[nodiscard]] std::vector<PaletteColour> PaletteOf(const DMXname& fixtures, std::span<const int> of);
/// Names of their gobos, each once.
[[nodiscard]] std::vector<std::string> GobosOf(const DMXname& fixtures, std::span<const int> of);

}  // namespace dmx
