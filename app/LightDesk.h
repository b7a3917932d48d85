// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/DeskContext.h"
#include "app/WorkstationView.h"
#include "dmx/ports/DmxInterface.h"
#include "support/TripleBuffer.h"

namespace app {

/// What the window draws of it; a snapshot of one tick.
struct LightView {};

/// Stage lighting in the running program: universe, output, show player.
/// Threads: StartUp, View and commands on the window's; Tick on the conductor, also before StartUp; ShutDown
/// once the conductor has stopped.
class LightDesk {
 public:
  LightDesk(const DeskContext& context, dmx::DmxInterface* wire);

  void StartUp();
  /// decks: of the same tick.
  void Tick(const WorkstationView& decks);
  void ShutDown();

  [[nodiscard]] const LightView& View() { return views_.Read(); }

 private:
  DeskContext context_;
  support::TripleBuffer<LightView> views_;
};

}  // namespace app
