// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/TableChanges.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <vector>

namespace catalogue {
namespace {

using Cells = std::array<std::string_view, track_table::kMostColumns>;

Cells RowCells(const track_table& table, int row) {
  Cells cells;
  table.Cells(row, cells);
  return cells;
}

/// Rows by the name in a column.
using Named = std::unordered_map<std::string_view, int>;

Named NamesOf(const track_table& table, const std::vector<int>& rows, int column) {
  Named named;
  for (const int row : rows) named.emplace(table.Cell(row, column), row);
  return named;
}

/// Ascending.
std::vector<int> RowsToChange(const TableChanges& changes, const Named& kept, const track_table& table,
                              int column) {
  std::vector<int> rows;
  if (column == table.FileColumn() && changes.Size() <= kFewChanges) {
    const auto add = [&](std::string_view name) {
      for (const int row : table.RowsOf(name)) rows.push_back(row);
    };
    for (const auto& [name, row] : kept) add(name);
    for (const std::string& name : changes.removed) add(name);
    std::sort(rows.begin(), rows.end());
    return rows;
  }
  table.VisitColumn(column, [&](int row, std::string_view name) {
    if (kept.contains(name) || changes.removed.contains(std::string(name))) rows.push_back(row);
    return true;
  });
  return rows;
}

}  // namespace

TableChanges ChangesSince(const track_table& copy, const track_table& table, int column) {
  TableChanges changes{track_table(table.Columns()), {}};
  const std::vector<int> rows = table.RowsNotSharedWith(copy);
  const std::vector<int> old_rows = copy.RowsNotSharedWith(table);
  const Named old = NamesOf(copy, old_rows, column);
  const Named now = NamesOf(table, rows, column);
  for (const int row : rows) {
    const auto before = old.find(table.Cell(row, column));
    if (before == old.end() || RowCells(copy, before->second) != RowCells(table, row)) {
      changes.kept.AppendFrom(table, row);
    }
  }
  for (const int row : old_rows) {
    const std::string_view name = copy.Cell(row, column);
    if (!now.contains(name)) changes.removed.emplace(name);
  }
  return changes;
}

void Apply(const TableChanges& changes, track_table& table, int column) {
  Named kept;
  for (int row = 1; row <= changes.kept.Rows(); ++row) kept[changes.kept.Cell(row, column)] = row;
  std::unordered_set<int> placed;
  std::vector<int> removed;
  for (const int row : RowsToChange(changes, kept, table, column)) {
    const std::string name(table.Cell(row, column));
    if (changes.removed.contains(name)) {
      removed.push_back(row);
    } else if (const auto found = kept.find(name); found != kept.end()) {
      table.ReplaceRow(row, changes.kept, found->second);
      placed.insert(found->second);
    }
  }
  table.RemoveRows(removed);
  for (int row = 1; row <= changes.kept.Rows(); ++row) {
    if (!placed.contains(row)) table.AppendFrom(changes.kept, row);
  }
}

}  // namespace catalogue
