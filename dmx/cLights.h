// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "dmx/Collection.h"
#include "dmx/ports/DmxInterface.h"
#include "dmx/ports/Surface.h"
#include "dmx/show.h"

namespace dmx {

/// The preview of one light: where it falls, how wide and in which colour.
struct cLight {
  int Target = 0;  ///< the fixture's position in the show, from 1
  double X = 0;    ///< middle, in the unit of the surface
  double Y = 0;
  int Red = 0;  ///< 0 to 255, as the other two
  int Green = 0;
  int Blue = 0;
  double Radius = 0;
  int Steps = 1;  ///< discs from the rim inwards, each brighter than the one around it; 1 is a plain disc

  void DrawLight(Surface& surface) const;
};

class cLights : public Collection<cLight> {};

/// The colour that a label or a name begins with, in any letters; nothing for none.
[[nodiscard]] std::optional<LightColour> ColourNamed(std::string_view text);

/// The colour that a fixture throws at these levels: dimmers and shutters times mixed colours, or else the
/// colour that a preset is named after; white without any.
[[nodiscard]] LightColour ColourOf(const DMXfilename& fixture,
                                   std::span<const DmxLevel, kUniverseChannels> levels);

/// A light for each fixture, side by side on a surface of that size; pan and tilt move it within its part.
[[nodiscard]] cLights PreviewLights(const DMXname& fixtures,
                                    std::span<const DmxLevel, kUniverseChannels> levels, double width,
                                    double height);

}  // namespace dmx
