// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <vector>

#include "dmx/ports/DmxInterface.h"
#include "dmx/show.h"

namespace dmx {

/// A fader of the universe, from 1, and where it goes.
struct FaderMove {
  int channel = 0;
  DmxLevel level = 0;
  bool operator==(const FaderMove&) const = default;
};

// What a hand moves on fixtures that go together; they are told by their positions in the show, from 1. Of
// one that reaches beyond the universe, what lies beyond does not move.

/// A channel of the fixture at a position, and the channel that does the same of each other one.
[[nodiscard]] std::vector<FaderMove> MovesOfLevel(const DMXname& fixtures, std::span<const int> together,
                                                  int position, int channel, DmxLevel level);

struct MixedColour {
  DmxLevel red = 0;
  DmxLevel green = 0;
  DmxLevel blue = 0;
  bool operator==(const MixedColour&) const = default;
};
[[nodiscard]] std::vector<FaderMove> MovesOfColour(const DMXname& fixtures, std::span<const int> together,
                                                   const MixedColour& colour);

/// Pan and tilt from 0 to 1.
[[nodiscard]] std::vector<FaderMove> MovesOfDirection(const DMXname& fixtures, std::span<const int> together,
                                                      double pan, double tilt);

}  // namespace dmx
