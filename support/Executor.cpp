// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Executor.h"

#include <cassert>
#include <utility>

namespace support {

ThreadPool::ThreadPool(int threads) {
  assert(threads > 0 && "a pool has workers");
  for (int i = 0; i < threads; ++i) threads_.emplace_back([this] { Work(); });
}

ThreadPool::~ThreadPool() {
  {
    MutexLock lock(mutex_);
    stopping_ = true;
    jobs_.clear();
  }
  wake_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void ThreadPool::Post(std::function<void()> job) {
  {
    MutexLock lock(mutex_);
    if (stopping_) return;
    jobs_.push_back(std::move(job));
  }
  wake_.notify_one();
}

void ThreadPool::Work() {
  while (true) {
    std::function<void()> job;
    {
      MutexLock lock(mutex_);
      while (jobs_.empty() && !stopping_) lock.Wait(wake_);
      if (stopping_) return;
      job = std::move(jobs_.front());
      jobs_.pop_front();
    }
    job();
  }
}

}  // namespace support
