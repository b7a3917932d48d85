// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "app/ports/ScanPort.h"
#include "catalogue/ports/SideStore.h"
#include "catalogue/track_table.h"

namespace app {

/// A folder that was to be scanned, and what came of it.
struct ScannedFolder {
  std::string path;
  bool there =
      true;  ///< false also for one that holds nothing, as the place of a stick that is not there does
};

/// A table made anew, and what becomes of the rows that the scan did not find again.
struct ScanRows {
  struct Moved {
    std::string from;
    std::string to;
  };
  catalogue::track_table rows;  ///< those found, in their order, then those that stay, in the old one
  catalogue::track_table gone;  ///< rows of scanned folders whose files are certainly not there any more
  int kept = 0;                 ///< rows that stay
  std::vector<Moved> moved;     ///< files that are found elsewhere and are certainly not where they were
};

/// Joins the rows that a scan found with those of the table before.
///
/// What was known about a file for mixing goes along where its tag says nothing: from its row, or, of a file
/// that has no row or was written since, from what is kept of its sound. A point that a hand set goes before
/// the tag. A row that the scan did not find stays, unless its file lay in a folder that was scanned and is
/// not there. Threads: a worker's; blocks on the disk. store: may be null.
[[nodiscard]] ScanRows JoinRows(const catalogue::track_table& before, const ScanFound& found,
                                const std::vector<ScannedFolder>& folders, catalogue::SideStore* store);

/// Whether a path lies in a folder or in one below it.
[[nodiscard]] bool LiesBelow(std::string_view path, std::string_view folder);

}  // namespace app
