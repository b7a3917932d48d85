// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>
#include <string>

#include "app/Mailbox.h"
#include "app/WorkGate.h"
#include "app/WorkstationView.h"
#include "decks/WaveScan.h"
#include "support/Executor.h"

namespace app {

/// Has the waves of the decks' files made by workers.
///
/// Law: a file's wave is made once as long as a deck holds it, and not to its end when no deck does. A job
/// reads a second or two and then lets the next one have its turn. Threads: the conductor.
class WaveDesk {
 public:
  /// Answers come through the box, which the conductor empties.
  WaveDesk(decks::AudioEngine& engine, support::Executor& workers, std::shared_ptr<WorkGate> gate,
           std::shared_ptr<Mailbox> box);

  /// The deck holds this file now. Requires: the file is open, so that nothing waits for it.
  void Hold(int deck, const std::string& filename, decks::SampleFormat format);
  /// The deck holds nothing.
  void Drop(int deck);
  /// Of the deck's file; null until it is made.
  [[nodiscard]] std::shared_ptr<const music::Wave> Of(int deck) const;

 private:
  struct Job;
  static void Work(const std::shared_ptr<Job>& job);

  decks::AudioEngine& engine_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  std::array<std::shared_ptr<Job>, kDecks> jobs_;  // with the worker, and between decks with the same file
};

}  // namespace app
