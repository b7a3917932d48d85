// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/DeckChoice.h"

#include "app/WorkstationView.h"

namespace ui {

bool MayLoad(const app::DeckView& deck) {
  return deck.state != DeckState::Playing;
}

std::optional<int> DeckForLoading(const app::WorkstationView& view) {
  for (const DeckState wanted : {DeckState::Empty, DeckState::Ended, DeckState::Stopped, DeckState::Paused}) {
    for (const int deck : {1, 2}) {
      if (view.decks[static_cast<std::size_t>(deck - 1)].state == wanted) return deck;
    }
  }
  return std::nullopt;
}

}  // namespace ui
