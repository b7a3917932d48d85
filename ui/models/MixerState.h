// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "decks/Crossfader.h"

namespace ui {

/// Where the hands left the mixer: what decks are given is fader times crossfader.
struct MixerState {
  std::array<int, 2> faders{100, 100};    ///< 0 to 100
  std::array<int, 3> listen{80, 80, 80};  ///< in the headphones, of decks 1, 2 and the catalogue's
  int crossfader = 0;                     ///< -100 (deck 1) to 100 (deck 2)
  decks::CrossfaderCurve curve = decks::CrossfaderCurve::Smooth;
};

}  // namespace ui
