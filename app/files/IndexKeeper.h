// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/work/WorkGate.h"
#include "catalogue/track_table.h"
#include "support/Executor.h"
#include "support/Mutex.h"
#include "support/ports/FileSaver.h"

namespace app {

// Marks of files that hold something which was not read.
inline constexpr std::string_view kDamaged = "damaged", kUnreadable = "unreadable";

/// Saves a table to its index on a worker, always the newest state of it.
///
/// A run of failing saves is told once, and what was not saved stays for the next one. Law: what was given to
/// Save is on the disk after Flush, or a sentence said why not; what could not be read is never written over.
/// Threads: the owner's; the complaint is made on whichever thread saves.
class IndexKeeper {
 public:
  IndexKeeper(support::FileSaver& files, support::Executor& workers, std::shared_ptr<WorkGate> gate,
              std::filesystem::path path, std::function<void(const support::Error&)> complain);

  /// Saves a snapshot of the table; one that is still waiting is replaced.
  void Save(const catalogue::track_table& table);
  /// The same for a table that was made anew: the index as it is now stays beside it, as "NAME.before-N", of
  /// which the newest three do. Where it says the same already it is left alone.
  void Replace(const catalogue::track_table& table);
  static constexpr int kCopies = 3;
  /// The file holds something that was not read: the first save sets it aside as "NAME.MARK-N", and nothing
  /// is saved where that fails. mark: of a text that lives on. Called before the first save.
  void SetAsideFirst(std::string_view mark);
  /// Saves on this thread what no worker has begun to save. Requires: the gate is closed.
  void Flush();

 private:
  struct State;
  void Post(const catalogue::track_table& table, bool made_anew);
  static void SaveNewest(State& state);
  [[nodiscard]] static support::Result<void> PutAway(State& state, const catalogue::track_table& table,
                                                     bool& made_anew);

  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<State> state_;  // shared with jobs that may start after the keeper is gone
};

}  // namespace app
