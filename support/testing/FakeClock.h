// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>

#include "support/Clock.h"

namespace support::testing {

/// A clock that stands still until it is moved.
/// Threads: any.
class FakeClock final : public Clock {
 public:
  [[nodiscard]] TimePoint Now() const noexcept override { return TimePoint(Duration(ticks_.load())); }
  void Advance(Duration by) { ticks_ += by.count(); }

 private:
  std::atomic<Duration::rep> ticks_{0};
};

}  // namespace support::testing
