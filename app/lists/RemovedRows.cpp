// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/RemovedRows.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "catalogue/RowMoves.h"

namespace app {
namespace {

using catalogue::track_table;

/// Which of these rows hold files that the table has a row for.
std::unordered_set<std::string> FilesInBoth(const track_table& rows, const track_table& table, int column) {
  std::unordered_set<std::string> ours, both;
  if (table.Rows() == 0) return both;
  rows.VisitColumn(column, [&ours](int, std::string_view file) { return ours.emplace(file), true; });
  std::string name;
  table.VisitColumn(column, [&](int, std::string_view file) {
    name = file;
    if (ours.contains(name)) both.insert(name);
    return true;
  });
  return both;
}

int LeaveOut(track_table& rows, const std::unordered_set<std::string>& files, int column) {
  std::vector<int> known;
  rows.VisitColumn(column, [&](int row, std::string_view file) {
    if (files.contains(std::string(file))) known.push_back(row);
    return true;
  });
  rows.RemoveRows(known);
  return static_cast<int>(known.size());
}

/// Some rows that follow each other; many of them stay in their blocks.
track_table Part(const track_table& rows, int first, int end) {
  constexpr int kMany = 1000;
  if (end - first < kMany) {
    track_table part(rows.Columns());
    for (int row = first; row < end; ++row) part.AppendFrom(rows, row);
    return part;
  }
  std::vector<int> others;
  for (int row = 1; row <= rows.Rows(); ++row) {
    if (row < first || row >= end) others.push_back(row);
  }
  track_table part = rows;
  part.RemoveRows(others);
  return part;
}

/// Finds the places of runs in a table that may have changed, in ascending order.
class Places {
 public:
  Places(const track_table& table, int column) : table_(table), column_(column) {}

  int Of(int place, const std::string& below) {
    const int end = table_.Rows() + 1;
    const int expected = std::clamp(place + shift_, 1, end);
    if (below.empty()) return std::min(place, end);
    if (table_.Cell(expected - 1, column_) == below) return expected;
    if (searches_++ >= kMostSearches) return expected;
    const int above = catalogue::RowNearest(table_, column_, below, expected - 1);
    if (above == 0) return expected;
    shift_ = above + 1 - place;  // what comes next moved along with it, most likely
    return above + 1;
  }

 private:
  static constexpr int kMostSearches = 50;
  const track_table& table_;
  const int column_;
  int shift_ = 0;
  int searches_ = 0;
};

}  // namespace

RemovedRows::RemovedRows(const FileIntake::Tables& tables, std::function<void(ListId)> changed)
    : tables_(tables), changed_(std::move(changed)) {}

int RemovedRows::FileColumn(ListId list) {
  return list == ListId::Karaoke ? catalogue::karaoke::kFilename : catalogue::track::kFilename;
}

int RemovedRows::Remove(ListId list, std::vector<int> rows) {
  track_table& table = tables_.Of(list);
  std::erase_if(rows, [&table](int row) { return row < 1 || row > table.Rows(); });
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  if (rows.empty()) return 0;
  Remember(list, rows);
  const int removed = catalogue::RemoveRows(table, std::move(rows));
  changed_(list);
  return removed;
}

void RemovedRows::Remember(ListId list, const std::vector<int>& rows) {
  const track_table& table = tables_.Of(list);
  Step step{list, {}, table};
  std::vector<int> others;
  int next = 1;
  for (const int row : rows) {
    while (next < row) others.push_back(next++);
    ++next;
    const bool goes_on = !step.runs.empty() && step.runs.back().place + step.runs.back().rows == row;
    if (!goes_on) step.runs.push_back({row, 0, std::string(table.Cell(row - 1, FileColumn(list)))});
    ++step.runs.back().rows;
  }
  while (next <= table.Rows()) others.push_back(next++);
  step.rows.RemoveRows(others);
  steps_.push_back(std::move(step));
  Forget();
}

void RemovedRows::Forget() {
  int rows = 0;
  for (std::size_t i = 0; i + 1 < steps_.size(); ++i) rows += steps_[i].rows.Rows();
  while (steps_.size() > 1 && (steps_.size() > kMostSteps || rows > kMostRows)) {
    rows -= steps_.front().rows.Rows();
    steps_.pop_front();
  }
}

std::optional<RemovedRows::Back> RemovedRows::Undo() {
  if (steps_.empty()) return std::nullopt;
  const Step step = std::move(steps_.back());
  steps_.pop_back();
  track_table& table = tables_.Of(step.list);
  const int column = FileColumn(step.list);
  Back back{step.list};
  std::unordered_set<std::string> there;
  if (!IsPlaylist(step.list)) there = FilesInBoth(step.rows, table, column);
  Places places(table, column);
  int next = 1;
  for (const Run& run : step.runs) {
    track_table rows = Part(step.rows, next, next + run.rows);
    next += run.rows;
    if (!there.empty()) back.known += LeaveOut(rows, there, column);
    if (rows.Rows() == 0) continue;
    const int place = places.Of(run.place, run.below);
    if (back.rows == 0) back.first_row = place;
    back.rows += rows.Rows();
    catalogue::InsertRows(table, place, std::move(rows));
  }
  if (back.rows > 0) changed_(step.list);
  return back;
}

}  // namespace app
