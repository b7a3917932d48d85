// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/FileRows.h"

#include <algorithm>
#include <utility>

namespace app {
namespace {

constexpr int kRowsAtOnce = 20'000;
constexpr int kRowsBehind = 64;
constexpr int kRowsAhead = 1024;

std::vector<int> RowsOf(const catalogue::track_table& table, int column, const std::string& file) {
  std::vector<int> rows;
  table.VisitColumn(column, [&](int row, std::string_view cell) {
    if (cell == file) rows.push_back(row);
    return true;
  });
  return rows;
}

std::vector<int> FirstRowOf(const catalogue::track_table& table, int column, const std::string& file) {
  const int row = table.FindRow(column, file);
  return row == 0 ? std::vector<int>() : std::vector<int>{row};
}

}  // namespace

FileRows::FileRows(const catalogue::track_table& table, int filename_column, support::Executor& workers,
                   std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box)
    : table_(table),
      column_(filename_column),
      workers_(workers),
      gate_(std::move(gate)),
      box_(std::move(box)) {}

void FileRows::All(const std::string& file, Found found) {
  if (table_.Rows() <= kRowsAtOnce) return found(RowsOf(table_, column_, file));
  Look(file, Which::All, std::move(found));
}

void FileRows::One(const std::string& file, FoundOne found) {
  const auto tell = [this, found = std::move(found)](const std::vector<int>& rows) {
    const int row = rows.empty() ? 0 : rows.front();
    if (row > 0) last_ = row;
    found(row);
  };
  if (table_.Rows() <= kRowsAtOnce) return tell(FirstRowOf(table_, column_, file));
  if (const int row = Near(file); row > 0) return tell({row});
  Look(file, Which::One, tell);
}

int FileRows::Near(const std::string& file) const {
  const int end = std::min(last_ + kRowsAhead, table_.Rows());
  for (int row = std::max(last_ - kRowsBehind, 1); row <= end; ++row) {
    if (table_.Cell(row, column_) == file) return row;
  }
  return 0;
}

bool FileRows::StillThere(const std::string& file, const std::vector<int>& rows) const {
  return std::all_of(rows.begin(), rows.end(), [&](int row) { return table_.Cell(row, column_) == file; });
}

void FileRows::Look(const std::string& file, Which which, Found found) {
  workers_.Post([this, gate = gate_, box = box_, table = table_, file, which, found = std::move(found)] {
    gate->Pass([&] {
      auto rows = which == Which::All ? RowsOf(table, column_, file) : FirstRowOf(table, column_, file);
      box->Post([this, file, which, rows = std::move(rows), found] {
        // Rows that were moved meanwhile are looked for again.
        if (!StillThere(file, rows)) return Look(file, which, found);
        found(rows);
      });
    });
  });
}

}  // namespace app
