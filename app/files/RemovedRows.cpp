// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/RemovedRows.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/RowMoves.h"

namespace app {
namespace {

using catalogue::track_table;

/// Which of these rows (from 1) hold files that the table has a row for.
std::vector<bool> KnownIn(const track_table& table, const track_table& rows, int column) {
  if (table.Rows() == 0) return std::vector<bool>(static_cast<std::size_t>(rows.Rows()) + 1);
  std::vector<std::string> files;
  files.reserve(static_cast<std::size_t>(rows.Rows()));
  rows.VisitColumn(column, [&files](int, std::string_view file) { return files.emplace_back(file), true; });
  const std::vector<int> found = table.FirstRowsOf(files);
  std::vector<bool> known(found.size() + 1);
  for (std::size_t i = 0; i < found.size(); ++i) known[i + 1] = found[i] > 0;
  return known;
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
  Step step{list, {}, track_table(table.Columns())};
  for (const int row : rows) {
    const bool goes_on = !step.runs.empty() && step.runs.back().place + step.runs.back().rows == row;
    if (!goes_on) step.runs.push_back({row, 0, std::string(table.Cell(row - 1, FileColumn(list)))});
    ++step.runs.back().rows;
  }
  catalogue::AppendRows(step.rows, table, rows);
  steps_.push_back(std::move(step));
  Forget();
}

void RemovedRows::FollowFile(const std::string& from, const std::string& to) {
  for (Step& step : steps_) {
    for (const int row : step.rows.RowsOf(from)) step.rows.SetCell(row, FileColumn(step.list), to);
    for (Run& run : step.runs) {
      if (run.below == from) run.below = to;
    }
  }
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
  std::vector<bool> there(static_cast<std::size_t>(step.rows.Rows()) + 1);
  if (!IsPlaylist(step.list)) there = KnownIn(table, step.rows, column);
  Places places(table, column);
  int next = 1;
  for (const Run& run : step.runs) {
    track_table rows(table.Columns());
    std::vector<int> wanted;
    for (int row = next; row < next + run.rows; ++row) {
      there[static_cast<std::size_t>(row)] ? void(++back.known) : wanted.push_back(row);
    }
    catalogue::AppendRows(rows, step.rows, wanted);
    next += run.rows;
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
