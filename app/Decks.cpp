// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Decks.h"

#include <algorithm>

#include "app/DeckRack.h"
#include "app/StationContext.h"
#include "app/sound/DeckStation.h"
#include "support/Settings.h"

namespace app {

Decks::Decks(const Deck::Around& around, decks::SoundControl& sound)
    : around_(around),
      sound_(sound),
      decks_{Deck(1, around), Deck(2, around), Deck(3, around), Deck(4, around)} {}

void Decks::SetGainPercent(int percent) {
  const int slider = std::clamp(percent, 0, 100);
  around_.settings.SetNumber("Settings", "GainPercent", slider);
  around_.context.conductor->Order(around_.rack, &DeckRack::SetGainPercent, slider);
}

void Decks::SetStretch(decks::Stretch choice) {
  around_.settings.SetFlag("Settings", "LowPowerStretch", choice == decks::Stretch::LowPower);
  around_.context.conductor->Order(sound_, &decks::SoundControl::SetStretch, choice);
}

void Decks::StartUp(const Preferences& stored) {
  Mailbox& conductor = *around_.context.conductor;
  for (const int deck : {1, 2}) {
    const Preferences::Deck& one = stored.decks[static_cast<std::size_t>(deck - 1)];
    (*this)[deck].Restore(one.effects);
    (*this)[deck].RestoreTone(one.effects, one.equaliser);
  }
  const bool quantise = around_.settings.Flag("Decks", "Quantise");
  for (const int deck : {1, 2}) (*this)[deck].Adjust(&DeckCues::Quantise, quantise);
  const bool low = around_.settings.Flag("Settings", "LowPowerStretch");
  conductor.Order(sound_, &decks::SoundControl::SetStretch,
                  low ? decks::Stretch::LowPower : decks::Stretch::Best);
}

}  // namespace app
