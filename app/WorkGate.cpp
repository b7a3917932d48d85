// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WorkGate.h"

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

void WorkGate::Close() {
  support::MutexLock lock(mutex_);
  closed_ = true;
  while (inside_ > 0) lock.Wait(left_);
}

bool WorkGate::Closed() {
  support::MutexLock lock(mutex_);
  return closed_;
}

}  // namespace app
