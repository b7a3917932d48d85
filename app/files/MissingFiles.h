// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/files/FileSet.h"
#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "catalogue/track_table.h"
#include "support/Clock.h"
#include "support/Executor.h"

namespace app {

/// Which files of the tables were not there when they were looked for last.
///
/// Threads: the tables', which empties the box; the looking is a worker's.
class MissingFiles {
 public:
  struct Outside {
    support::Executor& background;  ///< looks at all of them, a piece after the other
    support::Executor& workers;     ///< looks at one
    const support::Clock& clock;
  };
  struct Table {
    const catalogue::track_table& table;
    int filename_column;
  };
  /// How many files of the first table are not there, and one of them. Worse: others than before;
  /// Better: fewer, and none that is new.
  enum class News { Worse, Better };
  using Tell = std::function<void(News news, std::size_t count, const std::string& first)>;

  MissingFiles(const Outside& outside, std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box,
               std::vector<Table> tables, Tell tell);

  /// The newest look counts.
  void Look();
  /// Unless they are being looked for, or were less than a minute ago.
  void LookAgain();
  /// At these rows of a table, soon.
  void LookAt(const catalogue::track_table& table, int column, int first_row);
  /// At this one, at once.
  void LookAt(const std::string& file);

  [[nodiscard]] bool Has(std::string_view file) const;
  /// Grows with each answer.
  [[nodiscard]] std::size_t Answers() const { return answers_; }

 private:
  struct Round;
  struct Seen {
    std::string file;
    bool there;
  };
  void Note(const std::vector<Seen>& files);
  static void LookOn(const std::shared_ptr<Round>& round);
  void Take(Round& round);

  Outside outside_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  const std::vector<Table> tables_;
  const Tell tell_;
  std::shared_ptr<Round> newest_;  // with its job; null when none is under way
  std::optional<support::TimePoint> looked_;
  FileSet missing_;
  std::size_t told_ = 0;
  std::size_t answers_ = 0;
};

}  // namespace app
