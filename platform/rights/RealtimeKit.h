// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace platform::rights {

/// The daemon that gives threads of ordinary users real time, org.freedesktop.RealtimeKit1, on one
/// connection. Threads: one; every call may wait for kPatience.
class RealtimeKit {
 public:
  static constexpr std::chrono::milliseconds kPatience{1500};

  struct Limits {
    int priority = 0;          ///< the highest real-time priority
    std::int64_t time_us = 0;  ///< the most that RLIMIT_RTTIME may be; 0: it does not say
    int nice = 0;              ///< the lowest nice level
  };

  /// Nothing when there is no bus, or no such daemon on it.
  [[nodiscard]] static std::unique_ptr<RealtimeKit> Find(const std::string& bus);
  ~RealtimeKit();
  RealtimeKit(const RealtimeKit&) = delete;
  RealtimeKit& operator=(const RealtimeKit&) = delete;

  [[nodiscard]] const Limits& Allows() const { return limits_; }
  /// thread: as the kernel counts them. False: refused, or no answer.
  bool MakeRealtime(int thread, int priority);
  bool MakeHighPriority(int thread, int nice);

 private:
  struct Wire;
  explicit RealtimeKit(std::unique_ptr<Wire> wire);

  std::unique_ptr<Wire> wire_;
  Limits limits_;
};

}  // namespace platform::rights
