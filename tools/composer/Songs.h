// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "catalogue/ports/TagReader.h"
#include "tools/composer/studio/Sound.h"

namespace tools::composer {

struct Song {
  std::string file_name;
  catalogue::FileTags tags;
  Stereo sound;
};

[[nodiscard]] Song MakeHarbour();   ///< house, 124
[[nodiscard]] Song MakeRollers();   ///< disco and funk, 118
[[nodiscard]] Song MakeLanterns();  ///< down-tempo, 96
[[nodiscard]] Song MakeBeacons();   ///< trance, 128

}  // namespace tools::composer
