// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include "app/ports/Visualisation.h"

namespace app {

/// Our own visualisers. Closed plug-ins of other systems cannot be run here, so the folder adds none.
class BuiltInVisualisation final : public Visualisation {
 public:
  /// Bars of a quarter of an octave and more, 60 dB high.
  static constexpr const char* kSpectrum = "Spectrum";
  /// The wave as it goes by, beginning where it rises through zero, so that a tone stands still.
  static constexpr const char* kWave = "Wave";
  static constexpr int kBars = 24;

  std::vector<std::string> BASS_VIS_FindPlugins(const std::filesystem::path& folder) override;
  void BASS_VIS_SetConfig(int option, int value) override;
  [[nodiscard]] Picture Show(std::string_view name, const HeardSound& sound) override;
  /// 0 for an option that was never set.
  [[nodiscard]] int Config(int option) const;

 private:
  std::map<int, int> options_;
};

}  // namespace app
