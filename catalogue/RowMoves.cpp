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
  for (const int row : rows) {
    if (row < 1 || row > last) continue;
    to.AppendFrom(from, row);
    ++appended;
  }
  return appended;
}

int RemoveRows(track_table& table, std::vector<int> rows) {
  rows = InTheirOrder(std::move(rows), table.Rows());
  if (rows.size() == 1) {
    table.RemoveRow(rows.front());
  } else {
    table.RemoveRows(rows);
  }
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
  table.VisitColumn(column, [&](int row, std::string_view cell) {
    if (cell == text && (nearest == 0 || std::abs(row - place) < std::abs(nearest - place))) nearest = row;
    return nearest == 0 || row - place < std::abs(nearest - place);
  });
  return nearest;
}

int MoveRows(track_table& table, std::vector<int> rows, int before) {
  rows = InTheirOrder(std::move(rows), table.Rows());
  if (rows.empty()) return 0;
  before = std::clamp(before, 1, table.Rows() + 1);
  const track_table old = table;
  table.Clear();
  const auto append = [&](int first, int end) {
    for (int row = first; row < end; ++row) {
      if (!std::binary_search(rows.begin(), rows.end(), row)) table.AppendFrom(old, row);
    }
  };
  append(1, before);
  const int first = table.Rows() + 1;
  AppendRows(table, old, rows);
  append(before, old.Rows() + 1);
  return first;
}

}  // namespace catalogue
