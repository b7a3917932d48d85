// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <unordered_set>

#include "catalogue/track_table.h"

namespace catalogue {

/// What became of a table since a copy of it was made. Rows are told by one column, the name of their file.
struct TableChanges {
  track_table kept;  ///< those that were added or changed, as they are now
  std::unordered_set<std::string> removed;
  [[nodiscard]] bool Empty() const { return Size() == 0; }
  [[nodiscard]] std::size_t Size() const { return static_cast<std::size_t>(kept.Rows()) + removed.size(); }
};

/// Up to so many are made to a million rows in a few milliseconds.
inline constexpr std::size_t kFewChanges = 8;

/// Quick where the table shares most of its blocks with the copy, however large it is.
[[nodiscard]] TableChanges ChangesSince(const track_table& copy, const track_table& table, int column);

/// Makes the same changes to another table: a kept row takes the place of the one with its name, or comes
/// last. Looks at every row, unless the changes are few.
void Apply(const TableChanges& changes, track_table& table, int column);

}  // namespace catalogue
