// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "app/sound/DeckView.h"

namespace app {
struct WorkstationView;
}

namespace ui {

using DeckState = app::DeckView::State;

/// A deck that is heard is never loaded over: the hand that slips at a party must not end the music.
[[nodiscard]] bool MayLoad(const app::DeckView& deck);

/// The mixing deck that a track goes to when none is named: an empty one, else one whose track has ended,
/// else one that stands, else a paused one; deck 1 before deck 2. Nothing when both play or are being loaded.
[[nodiscard]] std::optional<int> DeckForLoading(const app::WorkstationView& view);

}  // namespace ui
