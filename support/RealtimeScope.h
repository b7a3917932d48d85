// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace support {

/// Marks the present scope as work of an audio callback: no heap, no lock, nothing that waits.
///
/// It costs one thread-local counter. Test builds that link the guard of support/testing end with a message
/// when memory is taken or a mutex is locked inside the scope. Threads: any, counted for each by itself.
class RealtimeScope {
 public:
  RealtimeScope() noexcept { ++depth_; }
  ~RealtimeScope() { --depth_; }
  RealtimeScope(const RealtimeScope&) = delete;
  RealtimeScope& operator=(const RealtimeScope&) = delete;

  [[nodiscard]] static bool Active() noexcept { return depth_ > 0; }

 private:
  inline static thread_local int depth_ = 0;
};

}  // namespace support
