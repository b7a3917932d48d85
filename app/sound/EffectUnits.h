// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "app/sound/DeckView.h"
#include "app/sound/EffectTable.h"
#include "decks/clsBassPlayer.h"

namespace app {

/// The effects of a deck, for the stream that it plays at the moment.
///
/// Law: what a hand chose holds for every file that comes onto the deck. What is locked to the beat follows
/// the tempo as it is heard. Threads: the conductor.
class EffectUnits {
 public:
  /// port: null where the deck has none.
  EffectUnits(decks::DeckEffects* port, const decks::clsBassPlayer& player) : port_(port), player_(player) {}

  /// slider: 0 to 100.
  void Turn(EffectControl control, int slider);
  void Switch(decks::EffectKind kind, bool on);
  /// On for as long as this holds, whatever its switch.
  void Hold(decks::EffectKind kind, bool held);
  /// quarters: of kBeatQuarters.
  void LockToBeat(decks::EffectKind kind, int quarters);
  void Restore(const EffectChoices& choices);

  /// The stream is another one.
  void Apply();
  /// The tempo that is heard; 0 when unknown.
  void Follow(double bpm);
  /// The deck was emptied.
  void Silence();
  void Show(DeckView& view) const;

 private:
  void Send();

  decks::DeckEffects* port_;
  const decks::clsBassPlayer& player_;
  EffectChoices choices_;
  std::array<bool, decks::kEffectKinds> held_{};
  double bpm_ = 0;
};

}  // namespace app
