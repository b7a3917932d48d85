// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace app {

/// The pictures that move with the music.
/// Threads: one at a time; start-up searches on the conductor, before anything plays.
class Visualisation {
 public:
  virtual ~Visualisation() = default;
  /// Names of all that can be shown: the built-in ones, then the plug-ins of the folder, which may be
  /// missing.
  virtual std::vector<std::string> BASS_VIS_FindPlugins(const std::filesystem::path& folder) = 0;
  virtual void BASS_VIS_SetConfig(int option, int value) = 0;
};

}  // namespace app
