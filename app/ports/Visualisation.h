// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "app/ports/HeardSound.h"

namespace app {

/// One picture of a visualiser, from left to right, for whoever paints it.
struct Picture {
  enum class Kind {
    Empty,
    Bars,  ///< heights from 0 to 1
    Line   ///< places from -1 (bottom) to 1
  };
  Kind kind = Kind::Empty;
  std::vector<float> values;
};

/// The pictures that move with the music.
/// Threads: one at a time; start-up searches on the conductor, before anything plays; then the window's.
class Visualisation {
 public:
  virtual ~Visualisation() = default;
  /// Names of all that can be shown: the built-in ones, then the plug-ins of the folder, which may be
  /// missing.
  virtual std::vector<std::string> BASS_VIS_FindPlugins(const std::filesystem::path& folder) = 0;
  virtual void BASS_VIS_SetConfig(int option, int value) = 0;
  /// What a visualiser makes of the sound; the same number of values each time. Empty for a name that was not
  /// found.
  [[nodiscard]] virtual Picture Show(std::string_view name, const HeardSound& sound) = 0;
};

}  // namespace app
