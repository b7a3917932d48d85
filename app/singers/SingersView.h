// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "singers/Rotation.h"
#include "singers/WaitTimes.h"

namespace app {

/// The host's sheet at one moment. It never changes.
struct SingersSheet {
  std::shared_ptr<const singers::Rotation> turns;  ///< never null; the same in sheets between two changes
  std::vector<singers::Wait> waits;
  bool on_stage_sings = false;   ///< the song on stage has begun, and is not over
  std::string sang_last;         ///< name of whoever has sung; empty while somebody sings
  singers::SingerId newest = 0;  ///< who was added last
};

/// What the window draws of the singers; a snapshot of one tick.
struct SingersView {
  std::shared_ptr<const SingersSheet> sheet;  ///< never null. Shared with the window's pictures
  /// Of the singer book, in the order of the alphabet. Shared, because a snapshot never changes; never null.
  std::shared_ptr<const std::vector<std::string>> names;
};

}  // namespace app
