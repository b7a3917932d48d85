// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

namespace support {

using TimePoint = std::chrono::steady_clock::time_point;
using Duration = std::chrono::steady_clock::duration;

/// The only source of time for the rooms, so that a test can move it by hand.
/// Threads: any.
class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual TimePoint Now() const noexcept = 0;
};

/// The system's monotonic clock.
class SteadyClock final : public Clock {
 public:
  [[nodiscard]] TimePoint Now() const noexcept override { return std::chrono::steady_clock::now(); }
};

}  // namespace support
