// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/files/FileIntake.h"
#include "catalogue/track_table.h"

namespace app {

/// Takes rows out of lists and brings them back, the newest ones first; files are not touched.
///
/// Where a list has changed meanwhile, rows come below the row that they stood below; where that one is gone
/// too, at their number. A file that has a row in the catalogue or the karaoke table again gets no second one
/// there. What was taken out long ago is forgotten, see kMostSteps and kMostRows. Threads: the tables' owner.
class RemovedRows {
 public:
  static constexpr std::size_t kMostSteps = 50;
  static constexpr int kMostRows = 200'000;  ///< of all steps but the newest

  RemovedRows(const FileIntake::Tables& tables, std::function<void(ListId)> changed);

  /// How many were there.
  int Remove(ListId list, std::vector<int> rows);
  struct Back {
    ListId list;
    int rows = 0;
    int known = 0;      ///< files that have a row again
    int first_row = 0;  ///< of those that came back; 0: none
  };
  /// Nothing when nothing is left to bring back.
  std::optional<Back> Undo();
  [[nodiscard]] bool CanUndo() const { return !steps_.empty(); }
  /// A file has another name now.
  void FollowFile(const std::string& from, const std::string& to);

 private:
  /// Rows that stood together.
  struct Run {
    int place;
    int rows;
    std::string below;  ///< file of the row above; empty for the first one
  };
  struct Step {
    ListId list;
    std::vector<Run> runs;
    catalogue::track_table rows;
  };
  [[nodiscard]] static int FileColumn(ListId list);
  void Remember(ListId list, const std::vector<int>& rows);
  void Forget();

  FileIntake::Tables tables_;
  std::function<void(ListId)> changed_;
  std::deque<Step> steps_;
};

}  // namespace app
