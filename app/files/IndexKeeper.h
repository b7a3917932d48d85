// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/work/WorkGate.h"
#include "catalogue/track_table.h"
#include "support/Executor.h"
#include "support/Mutex.h"
#include "support/ports/FileSaver.h"

namespace app {

/// Saves a table to its index on a worker, always the newest state of it.
///
/// A run of failing saves is told once. Law: what was given to Save is on the disk after Flush, or a sentence
/// said why not. Threads: the owner's; the complaint is made on whichever thread saves.
class IndexKeeper {
 public:
  IndexKeeper(support::FileSaver& files, support::Executor& workers, std::shared_ptr<WorkGate> gate,
              std::filesystem::path path, std::function<void(const support::Error&)> complain);

  /// Saves a snapshot of the table; one that is still waiting is replaced.
  void Save(const catalogue::track_table& table);
  /// Saves on this thread what no worker has begun to save. Requires: the gate is closed.
  void Flush();

 private:
  struct State;
  static void SaveNewest(State& state);

  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<State> state_;  // shared with jobs that may start after the keeper is gone
};

}  // namespace app
