// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Executor.h"

#include <algorithm>
#include <cassert>
#include <condition_variable>
#include <deque>
#include <list>
#include <utility>

namespace support {

const SteadyClock ThreadPool::kSystemClock;

struct ThreadPool::State {
  Mutex mutex;
  std::condition_variable wake;
  std::condition_variable left;
  std::deque<std::function<void()>> jobs DJ_GUARDED_BY(mutex);
  std::list<TimePoint> running DJ_GUARDED_BY(mutex);  ///< when each began
  int threads DJ_GUARDED_BY(mutex) = 0;
  bool stopping DJ_GUARDED_BY(mutex) = false;

  void Work(const Clock& clock) DJ_EXCLUDES(mutex);
  [[nodiscard]] int Stuck(TimePoint now) const DJ_REQUIRES(mutex) {
    return static_cast<int>(std::count_if(running.begin(), running.end(),
                                          [now](TimePoint began) { return now - began > kStuck; }));
  }
};

ThreadPool::ThreadPool(int threads, StuckJobs stuck, const Clock& clock, std::function<void()> thread_started)
    : wanted_(threads),
      stuck_(stuck),
      clock_(clock),
      thread_started_(std::move(thread_started)),
      state_(std::make_shared<State>()) {
  assert(threads > 0 && "a pool has workers");
  for (int i = 0; i < threads; ++i) Begin();
}

void ThreadPool::Begin() {
  {
    MutexLock lock(state_->mutex);
    ++state_->threads;
  }
  MutexLock lock(threads_mutex_);
  threads_.emplace_back([state = state_, &clock = clock_, started = thread_started_] {
    if (started) started();
    state->Work(clock);
  });
}

ThreadPool::~ThreadPool() {
  constexpr std::chrono::hours kForEver{24 * 365};
  {
    MutexLock lock(threads_mutex_);
    if (threads_.empty()) return;  // finished, or left behind
  }
  static_cast<void>(Finish(kForEver));
}

bool ThreadPool::Finish(std::chrono::milliseconds patience) {
  const TimePoint deadline = std::chrono::steady_clock::now() + patience;
  {
    std::deque<std::function<void()>> dropped;  // freed after the lock
    MutexLock lock(state_->mutex);
    state_->stopping = true;
    dropped.swap(state_->jobs);
  }
  state_->wake.notify_all();
  bool ended = false;
  {
    MutexLock lock(state_->mutex);
    while (state_->threads > 0 && std::chrono::steady_clock::now() < deadline) {
      lock.WaitUntil(state_->left, deadline);
    }
    ended = state_->threads == 0;
  }
  MutexLock lock(threads_mutex_);
  for (std::thread& thread : threads_) ended ? thread.join() : thread.detach();
  threads_.clear();
  return ended;
}

void ThreadPool::Post(std::function<void()> job) {
  bool replace = false;
  {
    MutexLock lock(state_->mutex);
    if (state_->stopping) return;
    state_->jobs.push_back(std::move(job));
    if (stuck_ == StuckJobs::Replace) {
      const int stuck = state_->Stuck(clock_.Now());
      replace = state_->threads < wanted_ + std::min(stuck, kMostStuck);
    }
  }
  state_->wake.notify_one();
  if (replace) Begin();
}

void ThreadPool::State::Work(const Clock& clock) {
  while (true) {
    std::function<void()> job;
    std::list<TimePoint>::iterator mine;
    {
      MutexLock lock(mutex);
      while (jobs.empty() && !stopping) lock.Wait(wake);
      if (stopping) break;
      job = std::move(jobs.front());
      jobs.pop_front();
      mine = running.insert(running.end(), clock.Now());
    }
    job();
    job = nullptr;
    MutexLock lock(mutex);
    running.erase(mine);
  }
  MutexLock lock(mutex);
  --threads;
  left.notify_all();
}

}  // namespace support
