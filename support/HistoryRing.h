// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <type_traits>

namespace support {

/// The last kCapacity entries of one writer, for any number of readers that come when they like.
///
/// The writer never waits and overwrites the oldest entry; a reader that was overtaken gets nothing for that
/// entry. Entries are numbered from 0 by the order of writing. (A sequence lock for every entry, its payload
/// in relaxed atomics, after H. Boehm, "Can seqlocks get along with programming language memory models?",
/// 2012.) Threads: one writer, any readers; no allocation, no lock.
template <typename T, std::size_t kCapacity>
class HistoryRing {
  static_assert(std::is_trivially_copyable_v<T> && std::is_default_constructible_v<T>);
  static_assert((kCapacity & (kCapacity - 1)) == 0, "the capacity is a power of two");

 public:
  void Write(const T& value) noexcept {
    const std::uint64_t number = written_.load(std::memory_order_relaxed);
    Slot& slot = slots_[number & (kCapacity - 1)];
    slot.version.store(2 * number + 1, std::memory_order_relaxed);
    std::atomic_thread_fence(std::memory_order_release);
    std::array<std::uint64_t, kWords> words{};
    std::memcpy(words.data(), &value, sizeof(T));
    for (std::size_t i = 0; i < kWords; ++i) slot.words[i].store(words[i], std::memory_order_relaxed);
    slot.version.store(2 * number + 2, std::memory_order_release);
    written_.store(number + 1, std::memory_order_release);
  }

  /// How many entries were ever written; the newest has the number Written() - 1.
  [[nodiscard]] std::uint64_t Written() const noexcept { return written_.load(std::memory_order_acquire); }

  /// Nothing when the entry is not written yet or already overwritten.
  [[nodiscard]] std::optional<T> Read(std::uint64_t number) const noexcept {
    const Slot& slot = slots_[number & (kCapacity - 1)];
    if (slot.version.load(std::memory_order_acquire) != 2 * number + 2) return std::nullopt;
    std::array<std::uint64_t, kWords> words;
    for (std::size_t i = 0; i < kWords; ++i) words[i] = slot.words[i].load(std::memory_order_relaxed);
    std::atomic_thread_fence(std::memory_order_acquire);
    if (slot.version.load(std::memory_order_relaxed) != 2 * number + 2) return std::nullopt;
    T value;
    std::memcpy(static_cast<void*>(&value), words.data(), sizeof(T));
    return value;
  }

  [[nodiscard]] std::optional<T> Newest() const noexcept {
    const std::uint64_t written = Written();
    return written == 0 ? std::nullopt : Read(written - 1);
  }

 private:
  static constexpr std::size_t kWords = (sizeof(T) + 7) / 8;
  struct Slot {
    std::atomic<std::uint64_t> version{0};
    std::array<std::atomic<std::uint64_t>, kWords> words{};
  };
  std::array<Slot, kCapacity> slots_{};
  std::atomic<std::uint64_t> written_{0};
};

}  // namespace support
