// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/DeskContext.h"
#include "app/WorkstationView.h"
#include "karaoke/ports/Synthesiser.h"
#include "support/TripleBuffer.h"

namespace app {

/// What the window draws of it; a snapshot of one tick.
struct SongView {};

/// Karaoke songs in the running program: what sounds and what the singers see.
/// Threads: StartUp, View and commands on the window's; Tick on the conductor, also before StartUp; ShutDown
/// once the conductor has stopped.
class SongDesk {
 public:
  SongDesk(const DeskContext& context, karaoke::SynthesiserFactory* synthesisers);

  void StartUp();
  /// decks: of the same tick.
  void Tick(const WorkstationView& decks);
  void ShutDown();

  [[nodiscard]] const SongView& View() { return views_.Read(); }

 private:
  DeskContext context_;
  support::TripleBuffer<SongView> views_;
};

}  // namespace app
