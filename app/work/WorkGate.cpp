// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/work/WorkGate.h"

namespace app {

bool WorkGate::Pass(const std::function<void()>& work) {
  {
    support::MutexLock lock(mutex_);
    if (closed_) return false;
    ++inside_;
  }
  work();
  // Notified under the lock: a closer that wakes may destroy the gate's owner at once.
  support::MutexLock lock(mutex_);
  --inside_;
  left_.notify_all();
  return true;
}

bool WorkGate::Close(std::chrono::milliseconds patience) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  support::MutexLock lock(mutex_);
  closed_ = true;
  while (inside_ > 0 && std::chrono::steady_clock::now() < deadline) lock.WaitUntil(left_, deadline);
  return inside_ == 0;
}

bool WorkGate::Closed() {
  support::MutexLock lock(mutex_);
  return closed_;
}

}  // namespace app
