// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

#include "support/Clock.h"

namespace lightorgan {

inline constexpr int kSlowest = 0;
inline constexpr int kFastest = 100;

/// Of the speed sliders: 2 s at 0, 20 ms at 100, evenly graded for the ear: 2000 * 100^(-speed / 100) ms.
[[nodiscard]] std::chrono::milliseconds IntervalOf(int speed);

/// A timer that fires on a grid of its interval: a late tick delays no later one, and several that were
/// missed fire once. Threads: one.
class IntervalTimer {
 public:
  void Start(support::TimePoint now, support::Duration interval);
  void Stop() { running_ = false; }
  [[nodiscard]] bool Running() const { return running_; }
  /// Acts at once.
  void SetInterval(support::TimePoint now, support::Duration interval);
  /// True once for every interval that passed.
  [[nodiscard]] bool Due(support::TimePoint now);

 private:
  bool running_ = false;
  support::Duration interval_{};
  support::TimePoint next_;
};

}  // namespace lightorgan
