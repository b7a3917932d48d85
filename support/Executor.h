// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <thread>
#include <vector>

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

/// A fixed number of worker threads. The destructor drops the jobs that have not started and waits for the
/// running ones, so a long job looks now and then whether its result is still wanted.
class ThreadPool final : public Executor {
 public:
  /// Requires: threads > 0.
  explicit ThreadPool(int threads);
  ~ThreadPool() override;
  ThreadPool(const ThreadPool&) = delete;
  ThreadPool& operator=(const ThreadPool&) = delete;

  void Post(std::function<void()> job) override DJ_EXCLUDES(mutex_);

 private:
  void Work() DJ_EXCLUDES(mutex_);

  Mutex mutex_;
  std::condition_variable wake_;
  std::deque<std::function<void()>> jobs_ DJ_GUARDED_BY(mutex_);
  bool stopping_ DJ_GUARDED_BY(mutex_) = false;
  std::vector<std::thread> threads_;
};

}  // namespace support
