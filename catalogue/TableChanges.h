// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <unordered_set>

#include "catalogue/track_table.h"

namespace catalogue {

/// What became of a table since a copy of it was made. Rows are told by one column, the name of their file.
struct TableChanges {
  track_table kept;  ///< those that were added or changed, as they are now
  std::unordered_set<std::string> removed;
  [[nodiscard]] bool Empty() const { return kept.Rows() == 0 && removed.empty(); }
};

/// Quick where little was changed, however large the table is.
[[nodiscard]] TableChanges ChangesSince(const track_table& copy, const track_table& table, int column);

/// Makes the same changes to another table: a kept row takes the place of the one with its name, or comes
/// last. Looks at every row.
void Apply(const TableChanges& changes, track_table& table, int column);

}  // namespace catalogue
