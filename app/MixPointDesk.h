// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>
#include <optional>

#include "app/Mailbox.h"
#include "app/WorkGate.h"
#include "app/WorkstationView.h"
#include "decks/MixPointScan.h"
#include "support/Executor.h"

namespace app {

/// Has the mix points of the decks' files found by workers.
///
/// Law: a file that a deck opens again under the same request is not scanned again; a request that was
/// overtaken ends within a block. Threads: the conductor.
class MixPointDesk {
 public:
  /// Answers come through the box, which the conductor empties.
  MixPointDesk(decks::AudioEngine& engine, decks::SoundControl& sound, support::Executor& workers,
               std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box);

  /// The deck holds this file now.
  void Hold(int deck, const decks::MixPointRequest& request);
  void Drop(int deck);
  /// Of the deck's file; nothing until they are found.
  [[nodiscard]] std::optional<decks::MixPoints> Of(int deck) const;
  /// From 0 to 1, over and over, while the deck's file is scanned; else 0.
  [[nodiscard]] double Busy(int deck) const;

 private:
  struct Job;
  static void Work(const std::shared_ptr<Job>& job);

  decks::AudioEngine& engine_;
  decks::SoundControl& sound_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  std::array<std::shared_ptr<Job>, kDecks> jobs_;  // with the worker
};

}  // namespace app
