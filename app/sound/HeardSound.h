// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "music/Spectrum.h"

namespace app {

/// The sound of the loudest audible deck as it is heard now.
struct HeardSound {
  int deck = 0;  ///< 0: none is audible, and all below is 0
  music::Spectrum spectrum{};
  std::array<float, 1024> samples{};  ///< left and right together, the newest one last; 1 is full scale
};

}  // namespace app
