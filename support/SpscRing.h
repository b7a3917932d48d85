// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <utility>

namespace support {

/// A queue of fixed size between one writing and one reading thread.
/// Threads: one pusher, one popper; neither ever waits, allocates or locks.
template <typename T, std::size_t kCapacity>
class SpscRing {
  static_assert((kCapacity & (kCapacity - 1)) == 0, "the capacity is a power of two");

 public:
  /// False, and nothing stored, when the ring is full.
  bool Push(T value) noexcept {
    const std::size_t head = head_.load(std::memory_order_relaxed);
    if (head - tail_.load(std::memory_order_acquire) == kCapacity) return false;
    slots_[head & (kCapacity - 1)] = std::move(value);
    head_.store(head + 1, std::memory_order_release);
    return true;
  }

  /// False when there is nothing to read.
  bool Pop(T& value) noexcept {
    T* front = Front();
    if (front == nullptr) return false;
    value = std::move(*front);
    DropFront();
    return true;
  }

  /// Reader's side: the oldest entry in place, or null.
  [[nodiscard]] T* Front() noexcept {
    const std::size_t tail = tail_.load(std::memory_order_relaxed);
    return tail == head_.load(std::memory_order_acquire) ? nullptr : &slots_[tail & (kCapacity - 1)];
  }
  /// Requires: Front() is not null.
  void DropFront() noexcept {
    tail_.store(tail_.load(std::memory_order_relaxed) + 1, std::memory_order_release);
  }

  /// Writer's side: the next free entry in place, or null when full; Publish() hands it over.
  [[nodiscard]] T* Back() noexcept {
    const std::size_t head = head_.load(std::memory_order_relaxed);
    const bool full = head - tail_.load(std::memory_order_acquire) == kCapacity;
    return full ? nullptr : &slots_[head & (kCapacity - 1)];
  }
  /// Requires: Back() is not null.
  void Publish() noexcept {
    head_.store(head_.load(std::memory_order_relaxed) + 1, std::memory_order_release);
  }

  /// Exact for the two threads that use the ring, a snapshot for others.
  [[nodiscard]] std::size_t Size() const noexcept {
    const std::size_t tail = tail_.load(std::memory_order_acquire);
    return head_.load(std::memory_order_acquire) - tail;
  }
  [[nodiscard]] bool Empty() const noexcept { return Size() == 0; }

 private:
  std::array<T, kCapacity> slots_{};
  alignas(64) std::atomic<std::size_t> head_{0};
  alignas(64) std::atomic<std::size_t> tail_{0};
};

}  // namespace support
