// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/RowMoves.h"

#include <algorithm>

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
  std::for_each(rows.rbegin(), rows.rend(), [&table](int row) { table.RemoveRow(row); });
  return static_cast<int>(rows.size());
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
