// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "support/Clock.h"
#include "support/Mutex.h"

namespace support {

/// Where long work goes: decoding, analysis, scans, saving.
/// Threads: Post from any thread but an audio callback.
class Executor {
 public:
  virtual ~Executor() = default;
  /// Jobs start in the order they were posted; each catches its own failures.
  virtual void Post(std::function<void()> job) = 0;
};

/// A fixed number of worker threads, to which others may come for those that a dead disk holds.
///
/// The destructor drops the jobs that have not started and waits for the running ones, so a long job looks
/// now and then whether its result is still wanted; whoever cannot wait for ever calls Finish first.
/// Owns: its threads, until Finish leaves one behind.
class ThreadPool final : public Executor {
 public:
  /// Replace: while a job has not come back for kStuck, a Post begins another thread in its place, kMostStuck
  /// of them at most. For pools of short jobs.
  enum class StuckJobs { Wait, Replace };
  static constexpr std::chrono::seconds kStuck{3};
  static constexpr int kMostStuck = 8;

  /// Requires: threads > 0. The clock outlives the pool and what it leaves behind.
  explicit ThreadPool(int threads, StuckJobs stuck = StuckJobs::Wait, const Clock& clock = kSystemClock,
                      std::function<void()> thread_started = nullptr);
  ~ThreadPool() override;
  ThreadPool(const ThreadPool&) = delete;
  ThreadPool& operator=(const ThreadPool&) = delete;

  void Post(std::function<void()> job) override;
  /// Drops what has not started and waits so long for the rest. False when a job still runs: its thread is
  /// left behind, and whatever it touches must live until the process ends. Nothing runs after either.
  [[nodiscard]] bool Finish(std::chrono::milliseconds patience);

 private:
  static const SteadyClock kSystemClock;
  struct State;

  void Begin();

  const int wanted_;
  const StuckJobs stuck_;
  const Clock& clock_;
  const std::function<void()> thread_started_;  ///< each thread's first call
  const std::shared_ptr<State> state_;          // with each thread, which may be left behind
  Mutex threads_mutex_;
  std::vector<std::thread> threads_ DJ_GUARDED_BY(threads_mutex_);
};

}  // namespace support
