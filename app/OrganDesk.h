// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/DeskContext.h"
#include "app/WorkstationView.h"
#include "lightorgan/ports/IoBoards.h"
#include "support/TripleBuffer.h"

namespace app {

/// What the window draws of it; a snapshot of one tick.
struct OrganView {};

/// The light organ in the running program.
/// Threads: StartUp, View and commands on the window's; Tick on the conductor, also before StartUp; ShutDown
/// once the conductor has stopped.
class OrganDesk {
 public:
  OrganDesk(const DeskContext& context, lightorgan::IoBoards* boards);

  void StartUp();
  /// decks: of the same tick.
  void Tick(const WorkstationView& decks);
  void ShutDown();

  [[nodiscard]] const OrganView& View() { return views_.Read(); }

 private:
  DeskContext context_;
  support::TripleBuffer<OrganView> views_;
};

}  // namespace app
