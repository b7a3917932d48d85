// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "app/work/WorkGate.h"
#include "support/Executor.h"

namespace app {

/// Jobs for the workers that are done one at a time, in the order in which they were posted: what reads and
/// writes the same files.
///
/// Law: after Flush none waits. Threads: Post from any, Flush from the owner's.
class OrderedWork {
 public:
  OrderedWork(support::Executor& workers, std::shared_ptr<WorkGate> gate);

  void Post(std::function<void()> job);
  /// Does what waits on this thread. Requires: the gate is closed.
  void Flush();

 private:
  struct State;
  static bool WorkOnOne(State& state);

  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<State> state_;  // shared with jobs that may start after the owner is gone
};

}  // namespace app
