// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/ports/Visualisation.h"

namespace support {
class Settings;
}

namespace app {

class DeckRack;
struct StationContext;

/// The visualisers, and what they make of the sound that is heard. Threads: the window's, which empties the
/// box.
class Visuals {
 public:
  /// visualisation: null where there is none.
  Visuals(const StationContext& context, Visualisation* visualisation, DeckRack& rack,
          support::Settings& settings)
      : context_(context), visualisation_(visualisation), rack_(rack), settings_(settings) {}

  void StartUp();
  /// Their names; known soon after StartUp.
  [[nodiscard]] const std::vector<std::string>& Names() const { return names_; }
  /// Frames a second.
  [[nodiscard]] int Rate() const { return rate_; }
  /// 1 to 60; stored.
  void SetRate(int frames_a_second);
  /// What a visualiser makes of the sound of the newest view.
  [[nodiscard]] Picture Show(std::string_view name);

 private:
  const StationContext& context_;
  Visualisation* visualisation_;
  DeckRack& rack_;
  support::Settings& settings_;
  std::vector<std::string> names_;
  int rate_ = 0;
};

}  // namespace app
