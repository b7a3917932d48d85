// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "catalogue/track_table.h"

namespace catalogue {

// Rows are numbered from 1; those that are not there are passed over, and one named twice counts once.

/// Appends these rows of one table to another one, cell by cell, in the order given; gives how many. Both may
/// be the same.
int AppendRows(track_table& to, const track_table& from, std::span<const int> rows);
int RemoveRows(track_table& table, std::vector<int> rows);
/// Puts all rows of another table before a row; one past the last, and what lies beyond: at the end.
void InsertRows(track_table& table, int before, track_table&& rows);
/// Of the rows that have this text in the column the one nearest to the place where it was; 0 for none. Looks
/// at every row, but for the column of the files' names.
[[nodiscard]] int RowNearest(const track_table& table, int column, std::string_view text, int place);
/// Puts these rows, in their present order, before a row (one past the last: to the end). Gives the number of
/// the first one at its new place, 0 when there was none.
int MoveRows(track_table& table, std::vector<int> rows, int before);

}  // namespace catalogue
