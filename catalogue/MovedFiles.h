// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "catalogue/track_table.h"

namespace catalogue {

/// What became of the files of a table's rows in a new scan.
struct ScanComparison {
  struct Moved {
    int before;  ///< row of the table that was
    int after;   ///< row of the new one
    std::string from;
    std::string to;
  };
  std::vector<Moved> moved;  ///< found again elsewhere
  int gone = 0;              ///< rows whose files were not found anywhere
};

/// A file that was not found under its path, but once under another one, with the same name and all that a
/// tag tells, was moved. Both tables have the same columns. Looks at every row.
[[nodiscard]] ScanComparison CompareScans(const track_table& before, const track_table& after);

/// What the rows of moved files knew for mixing goes along, where the new ones know nothing.
void CarryMixing(const ScanComparison& comparison, const track_table& before, track_table& after);

}  // namespace catalogue
