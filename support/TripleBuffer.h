// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <utility>

namespace support {

/// The newest value of one writer for one reader; older ones are dropped.
/// Threads: one writer, one reader; neither waits.
template <typename T>
class TripleBuffer {
 public:
  /// Writer: the value to fill in; it holds an older state, not necessarily the last one.
  [[nodiscard]] T& Draft() noexcept { return slots_[draft_]; }
  /// Writer: hands the draft over.
  void Publish() noexcept {
    const std::uint8_t given = static_cast<std::uint8_t>(draft_ | kFresh);
    draft_ = middle_.exchange(given, std::memory_order_acq_rel) & kIndex;
  }
  void Write(T value) {
    Draft() = std::move(value);
    Publish();
  }

  /// Reader: the newest published value; stays valid until the next Read.
  [[nodiscard]] const T& Read() noexcept {
    if ((middle_.load(std::memory_order_relaxed) & kFresh) != 0) {
      read_ = middle_.exchange(read_, std::memory_order_acq_rel) & kIndex;
    }
    return slots_[read_];
  }

 private:
  static constexpr std::uint8_t kFresh = 4;
  static constexpr std::uint8_t kIndex = 3;
  std::array<T, 3> slots_{};
  std::uint8_t draft_ = 0;
  std::uint8_t read_ = 1;
  std::atomic<std::uint8_t> middle_{2};
};

}  // namespace support
