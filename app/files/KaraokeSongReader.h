// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/ports/SongReader.h"

namespace app {

/// Gives the catalogue what karaoke's reader makes of a MIDI song.
class KaraokeSongReader final : public catalogue::SongReader {
 public:
  support::Result<catalogue::SongFacts> Read(const std::string& path) override;
};

}  // namespace app
