// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "app/sound/DeckStation.h"
#include "catalogue/track_table.h"

namespace app {

/// The row's file with what the row knows of it; nothing for a row that is not there.
[[nodiscard]] std::optional<Track> TrackToLoad(const catalogue::track_table& table, int row);

}  // namespace app
