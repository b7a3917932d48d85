// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "decks/ports/DeckEffects.h"
#include "engine/Players.h"

namespace engine {

/// The effects of the engine's streams. Threads: the owner's.
class EngineEffects final : public decks::DeckEffects {
 public:
  /// players: outlive it.
  explicit EngineEffects(Players& players) : players_(players) {}

  void SetEffects(int deck, decks::StreamHandle stream, const decks::EffectSettings& settings) override {
    Playing* playing = players_.Find(stream);
    if (playing == nullptr) return;
    players_.SetLine(*playing, deck);
    engine::SetEffects(*playing, decks::InRange(settings));
    players_.TellFollowers(stream);
  }

  [[nodiscard]] decks::EffectSettings Effects(decks::StreamHandle stream) override {
    const Playing* playing = players_.Find(stream);
    return playing == nullptr ? decks::EffectSettings{} : EffectsOf(*playing);
  }

  void Silence(int deck) override { players_.Silence(deck); }

 private:
  Players& players_;
};

}  // namespace engine
