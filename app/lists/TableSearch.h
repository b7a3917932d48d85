// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "app/work/Mailbox.h"
#include "catalogue/SearchIndex.h"
#include "catalogue/SortOrder.h"
#include "catalogue/track_table.h"
#include "support/Executor.h"

namespace app {

/// Which rows of a table are shown, and in what order, while a worker looks for them.
///
/// The newest wish wins: what was asked for meanwhile is looked for once the worker is done. The index is
/// kept up from the first Follow on, so that the first key finds it made. Threads: the table's owner, who
/// empties the box.
class TableSearch {
 public:
  TableSearch(const catalogue::track_table& table, const catalogue::SearchColumns& columns,
              support::Executor& workers, std::shared_ptr<Mailbox> box);
  ~TableSearch();
  TableSearch(const TableSearch&) = delete;
  TableSearch& operator=(const TableSearch&) = delete;

  void Look(std::string query);
  void Sort(const catalogue::SortWish& wish);
  [[nodiscard]] const std::string& Query() const { return query_; }
  [[nodiscard]] const catalogue::SortWish& Sorted() const { return sort_; }
  /// Notices that the table has changed. Called once a frame; quick. Rows in which only cells changed stay in
  /// their order, so that none moves away under a hand while their files are analysed.
  void Follow();
  /// Rows are sorted again by what their cells say now.
  void SortAgain();

  /// Rows of the table (from 1) as they are shown; null: all of them as they stand. Shared, because the
  /// window draws from it while the next one is made; it never changes. After rows were taken out of the
  /// table it may name some that are not there any more, until the next answer.
  using Rows = std::shared_ptr<const std::vector<int>>;
  [[nodiscard]] const Rows& Shown() const { return shown_; }
  /// Grows with each answer.
  [[nodiscard]] std::uint64_t Answers() const { return answers_; }
  /// Something was asked for and is not shown yet.
  [[nodiscard]] bool Busy() const { return working_; }

 private:
  enum class Order { Kept, Fresh };
  struct Work;
  void Begin();
  void Take(Rows rows);

  const catalogue::track_table& table_;
  support::Executor& workers_;
  std::shared_ptr<Mailbox> box_;
  std::shared_ptr<Work> work_;  // with the job, which may outlive this
  std::string query_;
  catalogue::SortWish sort_;
  catalogue::track_table seen_;  ///< as it was when a worker was last given it
  bool asked_ = false;
  bool sort_again_ = false;
  bool working_ = false;
  Rows shown_;
  std::uint64_t answers_ = 0;
};

}  // namespace app
