// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/RowMoves.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace catalogue {
namespace {

std::vector<int> InTheirOrder(std::vector<int> rows, int last) {
  std::erase_if(rows, [last](int row) { return row < 1 || row > last; });
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

}  // namespace

int AppendRows(track_table& to, const track_table& from, std::span<const int> rows) {
  int appended = 0;
  const int last = from.Rows();
  for (std::size_t first = 0; first < rows.size();) {
    std::size_t end = first + 1;
    while (end < rows.size() && rows[end] == rows[end - 1] + 1) ++end;
    const int begin = std::max(rows[first], 1), behind = std::min(rows[end - 1], last) + 1;
    if (begin < behind) {
      to.AppendRows(from, begin, behind - begin);
      appended += behind - begin;
    }
    first = end;
  }
  return appended;
}

int RemoveRows(track_table& table, std::vector<int> rows) {
  rows = InTheirOrder(std::move(rows), table.Rows());
  table.RemoveRows(rows);
  return static_cast<int>(rows.size());
}

void InsertRows(track_table& table, int before, track_table&& rows) {
  if (before < 1 || before > table.Rows()) return table.AppendAll(std::move(rows));
  constexpr int kFew = 64;
  if (rows.Rows() > kFew) return table.InsertAll(before, std::move(rows));
  for (int row = 1; row <= rows.Rows(); ++row) table.InsertFrom(before + row - 1, rows, row);
}

int RowNearest(const track_table& table, int column, std::string_view text, int place) {
  int nearest = 0;
  const auto look = [&](int row) {
    if (nearest == 0 || std::abs(row - place) < std::abs(nearest - place)) nearest = row;
  };
  if (column == table.FileColumn()) {
    for (const int row : table.RowsOf(text)) look(row);
    return nearest;
  }
  table.VisitColumn(column, [&](int row, std::string_view cell) {
    if (cell == text) look(row);
    return nearest == 0 || row - place < std::abs(nearest - place);
  });
  return nearest;
}

int MoveRows(track_table& table, std::vector<int> rows, int before) {
  rows = InTheirOrder(std::move(rows), table.Rows());
  if (rows.empty()) return 0;
  before = std::clamp(before, 1, table.Rows() + 1);
  track_table moved(table.Columns()), rest = table;
  AppendRows(moved, table, rows);
  rest.RemoveRows(rows);
  const auto ahead = static_cast<int>(std::lower_bound(rows.begin(), rows.end(), before) - rows.begin());
  const int first = before - ahead;
  table.Clear();
  table.AppendRows(rest, 1, first - 1);
  table.AppendRows(moved, 1, moved.Rows());
  table.AppendRows(rest, first, rest.Rows());
  return first;
}

}  // namespace catalogue
