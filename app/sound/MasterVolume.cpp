// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/MasterVolume.h"

#include <algorithm>
#include <cmath>

namespace app {

int MainVolumeOf(int percent) {
  return 99 - static_cast<int>(std::lround(0.99 * std::clamp(percent, 0, 100)));
}

int PercentOf(int main_volume) {
  return static_cast<int>(std::lround((99 - std::clamp(main_volume, 0, 99)) / 0.99));
}

}  // namespace app
