// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/MixerState.h"

#include <cmath>

namespace ui {

int MixerState::VolumeOf(int deck) const {
  const auto gains = decks::GainsAt(curve, crossfader / 100.0);
  const double gain = deck == 1 ? gains.first : gains.second;
  return static_cast<int>(std::lround(faders[deck == 1 ? 0 : 1] * gain));
}

}  // namespace ui
