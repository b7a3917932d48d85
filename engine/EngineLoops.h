// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <utility>

#include "decks/ports/DeckLoops.h"
#include "engine/Players.h"

namespace engine {

/// The loops of the engine's streams. Threads: the owner's.
class EngineLoops final : public decks::DeckLoops {
 public:
  /// players: outlive it. wake: the feeder.
  EngineLoops(Players& players, std::function<void()> wake) : players_(players), wake_(std::move(wake)) {}

  bool SetLoop(decks::StreamHandle handle, const std::optional<music::Loop>& loop) override;
  bool JumpBy(decks::StreamHandle handle, std::int64_t frames) override;
  void SetSlip(decks::StreamHandle handle, bool slip) override;
  void SlipBack(decks::StreamHandle handle) override;
  [[nodiscard]] State LoopState(decks::StreamHandle handle) override;

 private:
  Players& players_;
  const std::function<void()> wake_;
};

}  // namespace engine
