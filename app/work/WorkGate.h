// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>

#include "support/Mutex.h"

namespace app {

/// Lets workers at the outside things until it is closed.
///
/// Jobs outlive whoever posted them, so each passes through the gate, which its job holds by shared_ptr.
/// Threads: any.
class WorkGate {
 public:
  /// Runs the work, or nothing when the gate is closed; false then.
  bool Pass(const std::function<void()>& work) DJ_EXCLUDES(mutex_);
  /// From now on Pass runs nothing. Returns when nobody is inside any more, or when patience has ended: then
  /// it is false, and what those inside touch must live on.
  bool Close(std::chrono::milliseconds patience = kForEver) DJ_EXCLUDES(mutex_);
  [[nodiscard]] bool Closed() DJ_EXCLUDES(mutex_);

 private:
  static constexpr std::chrono::hours kForEver{24 * 365};

  support::Mutex mutex_;
  std::condition_variable left_;
  int inside_ DJ_GUARDED_BY(mutex_) = 0;
  bool closed_ DJ_GUARDED_BY(mutex_) = false;
};

}  // namespace app
