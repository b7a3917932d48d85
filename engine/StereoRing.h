// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>

namespace engine {

/// The newest frames of a sound that one callback writes, under the numbers that it gives them.
///
/// Law: the writer never waits and overwrites the oldest. (Frames are relaxed atomics, left and right in one
/// word, between two announcements of the writer's place, as in support::HistoryRing.) Threads: one writer;
/// any readers. Memory is taken at construction only.
class StereoRing {
 public:
  /// frames: a power of two.
  explicit StereoRing(std::int64_t frames);

  /// frame: number of the first one; each call begins at or behind the end of the last.
  void Write(std::int64_t frame, std::span<const float> stereo) noexcept;

  /// The first frame of the unbroken run that ends at End().
  [[nodiscard]] std::int64_t Begin() const noexcept { return begin_.load(std::memory_order_relaxed); }
  [[nodiscard]] std::int64_t End() const noexcept { return end_.load(std::memory_order_acquire); }
  [[nodiscard]] std::int64_t Frames() const noexcept { return mask_ + 1; }
  /// Fills the span with the frames from `from` on and tells how many of the first were overwritten
  /// meanwhile: newer sound at an older place. Requires: all of them lie before End().
  [[nodiscard]] std::int64_t Copy(std::int64_t from, std::span<float> stereo) const noexcept;
  /// The same, with silence for what was never written or is overwritten.
  void CopyOrSilence(std::int64_t from, std::span<float> stereo) const noexcept;

 private:
  [[nodiscard]] std::size_t PlaceOf(std::int64_t frame) const noexcept {
    return static_cast<std::size_t>(frame & mask_);
  }

  const std::int64_t mask_;
  const std::unique_ptr<std::atomic<std::uint64_t>[]> frames_;
  std::atomic<std::int64_t> begin_;
  std::atomic<std::int64_t> end_;
  std::atomic<std::int64_t> announced_;  ///< the end of what is being written
};

}  // namespace engine
