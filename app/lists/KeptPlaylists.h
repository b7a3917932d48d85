// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "app/files/IndexKeeper.h"
#include "catalogue/track_table.h"

namespace app {

struct StationContext;

/// Keeps the playlists of the window in the program folder, so that an evening goes on with them after the
/// program was closed, or the power failed.
///
/// Law: a list is written only when its rows change; what could not be read whole stays on the disk as it was
/// until then. Threads: the window's.
class KeptPlaylists {
 public:
  using Tables = std::array<catalogue::track_table, 3>;

  KeptPlaylists(const StationContext& context, Tables& tables);

  /// Fills the tables with what was kept; blocks on the disk.
  void Read();
  /// Once a frame.
  void Follow();
  /// Requires: the gate is closed.
  void Flush();

 private:
  const StationContext& context_;
  Tables& tables_;
  std::vector<catalogue::track_table> kept_;  ///< as they are on the disk, or will be
  std::vector<IndexKeeper> keepers_;
};

}  // namespace app
