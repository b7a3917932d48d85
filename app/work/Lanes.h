// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <memory>

#include "app/work/IdleCores.h"
#include "app/work/WorkGate.h"
#include "support/Executor.h"
#include "support/Mutex.h"

namespace app {

/// Runs the small tasks of one long work on as many workers as are idle.
///
/// A worker takes one task and then goes to the end of the queue of its pool, so that nobody waits behind
/// more than one task a worker. Law: the end comes once, when no task waits or runs; not at all when the gate
/// is closed before. Threads: any; held by shared_ptr, as its jobs outlive whoever made it.
class Lanes final : public std::enable_shared_from_this<Lanes> {
 public:
  using Task = std::function<void()>;

  /// ended is called by a worker.
  Lanes(support::Executor& workers, std::shared_ptr<WorkGate> gate, std::shared_ptr<const IdleCores> cores,
        Task ended);

  /// First goes before all that wait. Requires: called by a task, or before the end.
  enum class Turn { First, Last };
  void Push(Task task, Turn turn = Turn::Last) DJ_EXCLUDES(mutex_);
  /// Lets go of what waits; with no task running, the end comes soon.
  void Drop() DJ_EXCLUDES(mutex_);
  /// The gate is closed: no task needs to begin.
  [[nodiscard]] bool Closed() const { return gate_->Closed(); }

 private:
  void PostLanes(int lanes);
  static void Run(const std::shared_ptr<Lanes>& lanes);
  /// Whether there is more for this lane.
  bool TakeTurn() DJ_EXCLUDES(mutex_);
  [[nodiscard]] int LanesWanted() DJ_REQUIRES(mutex_);

  support::Executor& workers_;
  const std::shared_ptr<WorkGate> gate_;
  const std::shared_ptr<const IdleCores> cores_;
  const Task ended_;
  support::Mutex mutex_;
  std::deque<Task> waiting_ DJ_GUARDED_BY(mutex_);
  int open_ DJ_GUARDED_BY(mutex_) = 0;   ///< tasks that wait or run
  int lanes_ DJ_GUARDED_BY(mutex_) = 0;  ///< jobs that are with the workers
};

}  // namespace app
