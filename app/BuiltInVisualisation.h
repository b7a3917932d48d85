// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include "app/ports/Visualisation.h"

namespace app {

/// The visualisers that the window draws itself. Closed plug-ins of other systems cannot be run here, so the
/// folder adds none.
class BuiltInVisualisation final : public Visualisation {
 public:
  static constexpr const char* kSpectrum = "Spectrum";
  static constexpr const char* kWave = "Wave";

  std::vector<std::string> BASS_VIS_FindPlugins(const std::filesystem::path& folder) override;
  void BASS_VIS_SetConfig(int option, int value) override;
  /// 0 for an option that was never set.
  [[nodiscard]] int Config(int option) const;

 private:
  std::map<int, int> options_;
};

}  // namespace app
