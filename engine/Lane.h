// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>

#include "support/SpscRing.h"

namespace engine {

inline constexpr int kLaneBlockFrames = 128;

/// Sound ready to be heard: stereo at the device's rate, and where in the file it comes from.
struct LaneBlock {
  double source = 0;  ///< the file's frame under the first frame
  double line = 0;    ///< the same, had no loop taken it back in this segment
  double ratio = 1;   ///< source frames a frame
  int frames = 0;
  bool last = false;  ///< the file ends here
  std::array<float, 2 * kLaneBlockFrames> samples;
};

/// When the callback goes over to a lane that is offered to it.
struct LaneEntry {
  enum class When {
    AtOnce,
    Aligned,  ///< where the other lane gets to this one's first source frame
    AtFrame,  ///< at an engine frame; whoever comes late begins that much later in it
    Counted,  ///< once so many frames were taken from the other lane, as late as AtFrame
  } when = When::AtOnce;
  std::int64_t frame = 0;
};

/// One of a stream's two queues of sound between feeder and callback.
///
/// Threads: the feeder appends, the callback takes. While a lane is idle the feeder owns both ends; the
/// stream's hand_over says when. A lane holds one segment: from one place on without a jump, but for the
/// turns of a loop.
class Lane {
 public:
  static constexpr std::size_t kBlocks = 128;

  // Feeder.

  /// Requires: the lane is idle.
  void Clear(std::uint32_t place, const LaneEntry& entry, std::int64_t moved = 0) noexcept {
    while (ring_.Front() != nullptr) ring_.DropFront();
    fed_.store(0, std::memory_order_relaxed);
    taken_.store(0, std::memory_order_relaxed);
    finished_.store(false, std::memory_order_relaxed);
    place_ = place;
    moved_ = moved;
    entry_ = entry;
    ++segment_;
  }
  /// Null when the ring is full; Append() hands the block over.
  [[nodiscard]] LaneBlock* Back() noexcept { return ring_.Back(); }
  void Append() noexcept {
    const LaneBlock& block = *ring_.Back();
    const int frames = block.frames;
    const bool last = block.last;
    ring_.Publish();
    fed_.fetch_add(frames, std::memory_order_release);
    if (last) finished_.store(true, std::memory_order_release);
  }
  [[nodiscard]] std::int64_t Queued() const noexcept {
    return fed_.load(std::memory_order_acquire) - taken_.load(std::memory_order_acquire);
  }

  // Callback.

  [[nodiscard]] LaneBlock* Front() noexcept { return ring_.Front(); }
  void DropFront() noexcept { ring_.DropFront(); }
  void CountTaken(int frames) noexcept { taken_.fetch_add(frames, std::memory_order_release); }

  // Both.

  [[nodiscard]] std::int64_t Fed() const noexcept { return fed_.load(std::memory_order_acquire); }
  [[nodiscard]] std::int64_t Taken() const noexcept { return taken_.load(std::memory_order_acquire); }
  /// Read it before Queued(): then what is queued is all that will come.
  [[nodiscard]] bool Finished() const noexcept { return finished_.load(std::memory_order_acquire); }
  /// The number of the place that was asked for, see Stream.
  [[nodiscard]] std::uint32_t Place() const noexcept { return place_; }
  /// All jumps that were asked for until it was begun, see Stream.
  [[nodiscard]] std::int64_t Moved() const noexcept { return moved_; }
  [[nodiscard]] const LaneEntry& Entry() const noexcept { return entry_; }
  [[nodiscard]] std::uint32_t Segment() const noexcept { return segment_; }

 private:
  support::SpscRing<LaneBlock, kBlocks> ring_;
  std::atomic<std::int64_t> fed_{0};
  std::atomic<std::int64_t> taken_{0};
  std::atomic<bool> finished_{false};
  std::uint32_t place_ = 0;
  std::int64_t moved_ = 0;
  LaneEntry entry_;
  std::uint32_t segment_ = 0;
};

}  // namespace engine
