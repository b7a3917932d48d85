// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/work/Mailbox.h"

#include <utility>

namespace app {

using support::MutexLock;

void Mailbox::Post(Job job) {
  {
    MutexLock lock(mutex_);
    if (closed_) return;
    jobs_.push_back(std::move(job));
  }
  arrived_.notify_one();
}

std::vector<Mailbox::Job> Mailbox::Take() {
  MutexLock lock(mutex_);
  return std::exchange(jobs_, {});
}

void Mailbox::WaitUntil(support::TimePoint deadline) {
  MutexLock lock(mutex_);
  while (jobs_.empty() && std::chrono::steady_clock::now() < deadline) lock.WaitUntil(arrived_, deadline);
}

void Mailbox::Close() {
  std::vector<Job> dropped;
  MutexLock lock(mutex_);
  closed_ = true;
  dropped.swap(jobs_);
}

}  // namespace app
