// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "catalogue/track_table.h"
#include "support/Executor.h"

namespace app {

/// Finds the rows of a file. In a small table at once; in one of a million rows a worker looks, so that the
/// table's thread does not stand still.
///
/// Threads: the table's, which empties the box.
class FileRows {
 public:
  FileRows(const catalogue::track_table& table, int filename_column, support::Executor& workers,
           std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box);

  /// Called back at once or later, with rows as they stand then; none: the file has no row.
  using Found = std::function<void(const std::vector<int>& rows)>;
  void All(const std::string& file, Found found);
  /// One row, or 0. At once, too, where it lies near the last one found: many files are asked for in the
  /// order of their rows.
  using FoundOne = std::function<void(int row)>;
  void One(const std::string& file, FoundOne found);

 private:
  enum class Which { One, All };
  void Look(const std::string& file, Which which, Found found);
  [[nodiscard]] int Near(const std::string& file) const;
  [[nodiscard]] bool StillThere(const std::string& file, const std::vector<int>& rows) const;

  const catalogue::track_table& table_;
  const int column_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  int last_ = 1;
};

}  // namespace app
