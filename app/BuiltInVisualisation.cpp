// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/BuiltInVisualisation.h"

namespace app {

std::vector<std::string> BuiltInVisualisation::BASS_VIS_FindPlugins(const std::filesystem::path& /*folder*/) {
  return {kSpectrum, kWave};
}

void BuiltInVisualisation::BASS_VIS_SetConfig(int option, int value) {
  options_[option] = value;
}

int BuiltInVisualisation::Config(int option) const {
  const auto found = options_.find(option);
  return found == options_.end() ? 0 : found->second;
}

}  // namespace app
