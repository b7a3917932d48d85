// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "decks/ports/SoundDesk.h"

namespace app {

struct WorkstationView;

/// Tells the engine's desk who plays where and how the head-phones hear it, and reads the hall's meter.
/// Threads: the conductor.
class HallDesk {
 public:
  /// desk: null where the engine has none.
  explicit HallDesk(decks::SoundDesk* desk) : desk_(desk) {}

  void SetHeadphones(const decks::HeadphoneMix& mix) { mix_ = mix; }
  /// Reads where the outputs are, and fills in its part.
  void Tick(WorkstationView& view);

 private:
  decks::SoundDesk* desk_;
  decks::HeadphoneMix mix_;
};

}  // namespace app
