// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/settings/Preferences.h"
#include "app/sound/EffectTable.h"

namespace support {
class Settings;
}

namespace app {

class DeckRack;
struct StationContext;

/// The effects of decks 1 and 2 in the window's hands, and stored. What came of it stands in the decks'
/// views. Threads: the window's. deck: 1 or 2.
class EffectStation {
 public:
  EffectStation(const StationContext& context, DeckRack& rack, support::Settings& settings);

  /// As it was stored: a slider past its ends is taken back to them, one that is no number rests.
  void StartUp(const Preferences& stored);
  /// slider: 0 to 100.
  void Turn(int deck, EffectControl control, int slider);
  void Switch(int deck, decks::EffectKind kind, bool on);
  /// For as long as a pad is held; not stored.
  void Hold(int deck, decks::EffectKind kind, bool held);
  /// quarters: of kBeatQuarters.
  void LockToBeat(int deck, decks::EffectKind kind, int quarters);

 private:
  const StationContext& context_;
  DeckRack& rack_;
  support::Settings& settings_;
};

}  // namespace app
