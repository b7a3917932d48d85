// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "dmx/fixture.h"
#include "dmx/ports/FixtureFormats.h"

namespace dmx {

/// What became of a channel's ranges.
struct PackPresets {
  Collection<presets> list;  ///< in order of levels, from 0 to kHighestLevel without gap or overlap, or none
  std::vector<std::string> cut;  ///< names of those that lost levels to another one, or lie beyond all levels
  bool gaps = false;             ///< some levels were described by nobody
};

/// gap: the name of a range that closes a gap.
[[nodiscard]] PackPresets PresetsFrom(const PackChannel& channel, const std::string& gap);

/// What a range does; where its description does not say, its name tells.
[[nodiscard]] PresetEffect EffectOf(const PackRange& range, PackRole role);

/// The picture of a colour that comes nearest to "#ff8000"; 0 (white) for what is none.
[[nodiscard]] int NearestColourPicture(const std::string& colour);
/// The gobo picture that the name speaks of; 0 (open) for any other.
[[nodiscard]] int GoboPictureNamed(const std::string& name);

}  // namespace dmx
