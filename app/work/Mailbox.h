// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/Clock.h"
#include "support/Mutex.h"

namespace app {

/// Work that other threads leave for the one that owns the box.
///
/// Workers hold a box by shared_ptr, because their answer may come after its owner is gone: a closed box
/// drops what is posted. Threads: Post and Close from any; the rest from the owner's.
class Mailbox {
 public:
  using Job = std::function<void()>;

  void Post(Job job) DJ_EXCLUDES(mutex_);
  /// Has the box's owner call a member function of what is its own, with copies of these. The target lives
  /// for as long as the box is emptied.
  template <class Target, class Class, class Answer, class... Wanted, class... Given>
  void Order(Target& target, Answer (Class::*command)(Wanted...), Given&&... given) {
    Post([&target, command, ... copies = std::decay_t<Wanted>(std::forward<Given>(given))]() mutable {
      static_cast<void>((target.*command)(std::move(copies)...));
    });
  }
  /// Everything posted so far, in order.
  [[nodiscard]] std::vector<Job> Take() DJ_EXCLUDES(mutex_);
  /// Waits until something is in the box, or the moment has come.
  void WaitUntil(support::TimePoint deadline) DJ_EXCLUDES(mutex_);
  void Close() DJ_EXCLUDES(mutex_);

 private:
  support::Mutex mutex_;
  std::condition_variable arrived_;
  std::vector<Job> jobs_ DJ_GUARDED_BY(mutex_);
  bool closed_ DJ_GUARDED_BY(mutex_) = false;
};

}  // namespace app
