// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <utility>

#include "support/Executor.h"

namespace support::testing {

/// Keeps jobs until the test runs them, on the test's own thread.
class ManualExecutor final : public Executor {
 public:
  void Post(std::function<void()> job) override { jobs_.push_back(std::move(job)); }

  /// Runs the oldest job; false when there is none.
  bool RunOne() {
    if (jobs_.empty()) return false;
    auto job = std::move(jobs_.front());
    jobs_.pop_front();
    job();
    return true;
  }
  /// Runs until no job is left, those included that jobs post.
  void RunAll() {
    while (RunOne()) {
    }
  }
  [[nodiscard]] std::size_t Waiting() const { return jobs_.size(); }

 private:
  std::deque<std::function<void()>> jobs_;
};

}  // namespace support::testing
