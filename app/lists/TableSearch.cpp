// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/TableSearch.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace app {

/// Touched by one job after the other, but for stop.
struct TableSearch::Work {
  explicit Work(const catalogue::SearchColumns& columns)
      : file_column(columns.fields.back()), index(columns) {}

  /// Null when all rows are shown as they stand, or it was told to stop.
  Rows Find(const catalogue::track_table& table, const std::string& text, const catalogue::SortWish& wish,
            Order wanted) {
    const bool same = wanted == Order::Kept && AreTheSameFiles(table, index.Table());
    if (!index.Follow(table, stop)) return nullptr;
    if (!same || !(wish == sorted_by)) order.clear();
    sorted_by = wish;
    if (wish.column > 0 && order.empty()) order = catalogue::OrderBy(table, wish, stop);
    const catalogue::SearchQuery query = catalogue::ParseQuery(text);
    if (query.Empty()) return order.empty() ? nullptr : std::make_shared<const std::vector<int>>(order);
    return std::make_shared<const std::vector<int>>(index.Find(query, order.empty() ? nullptr : &order));
  }

  /// Row by row.
  [[nodiscard]] bool AreTheSameFiles(const catalogue::track_table& table,
                                     const catalogue::track_table& before) const {
    if (table.Rows() != before.Rows()) return false;
    const std::vector<int> changed = table.RowsNotSharedWith(before);
    return std::all_of(changed.begin(), changed.end(), [&](int row) {
      return table.Cell(row, file_column) == before.Cell(row, file_column);
    });
  }

  const int file_column;
  std::atomic<bool> stop{false};
  catalogue::SearchIndex index;
  std::vector<int> order;
  catalogue::SortWish sorted_by;
};

TableSearch::TableSearch(const catalogue::track_table& table, const catalogue::SearchColumns& columns,
                         support::Executor& workers, std::shared_ptr<Mailbox> box)
    : table_(table),
      workers_(workers),
      box_(std::move(box)),
      work_(std::make_shared<Work>(columns)),
      seen_(table.Columns()) {}

TableSearch::~TableSearch() {
  work_->stop = true;
}

void TableSearch::Look(std::string query) {
  if (query == query_) return;
  query_ = std::move(query);
  asked_ = true;
  Begin();
}

void TableSearch::Sort(const catalogue::SortWish& wish) {
  if (wish == sort_) return;
  sort_ = wish;
  asked_ = true;
  Begin();
}

void TableSearch::Follow() {
  if (working_ || table_.IsCopyOf(seen_)) return;
  asked_ = true;
  Begin();
}

void TableSearch::SortAgain() {
  sort_again_ = asked_ = true;
  Begin();
}

void TableSearch::Begin() {
  if (working_) return;
  working_ = true;
  asked_ = false;
  seen_ = table_;
  const Order order = std::exchange(sort_again_, false) ? Order::Fresh : Order::Kept;
  workers_.Post([this, work = work_, box = box_, table = seen_, query = query_, sort = sort_, order] {
    Rows rows = work->Find(table, query, sort, order);
    // Whoever told it to stop is not there any more.
    if (!work->stop)
      box->Post([this, work, rows = std::move(rows)] {
        if (!work->stop) Take(rows);
      });
  });
}

void TableSearch::Take(Rows rows) {
  working_ = false;
  const bool both_all = rows == nullptr && shown_ == nullptr;
  const bool same = both_all || (rows != nullptr && shown_ != nullptr && *rows == *shown_);
  if (!same) {
    shown_ = std::move(rows);
    ++answers_;
  }
  if (asked_) Begin();
}

}  // namespace app
