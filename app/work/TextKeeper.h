// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "app/work/WorkGate.h"
#include "support/Executor.h"
#include "support/ports/FileSaver.h"

namespace app {

/// Saves a text on a worker, always the newest one, flushed to the disk.
///
/// A run of failing saves is told once, and what was not saved stays for the next one. Law: what was given to
/// Save is on the disk after Flush, or the complaint was made. Threads: the owner's; text and complaint are
/// made on whichever thread saves.
class TextKeeper {
 public:
  using Text = std::function<std::string()>;
  using Complain = std::function<void(const support::Error&)>;
  TextKeeper(support::FileSaver& files, support::Executor& workers, std::shared_ptr<WorkGate> gate,
             std::filesystem::path path, Complain complain);

  void Save(Text text);
  /// The file holds something that was not read: the first save sets it aside as "NAME.MARK-N". mark: of a
  /// text that lives on. Called before the first save.
  void SetAsideFirst(std::string_view mark);
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
