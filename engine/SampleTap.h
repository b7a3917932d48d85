// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <span>

namespace engine {

/// The newest sound of a stream, kept until it is heard, so that others can look at it.
///
/// Law: the writer never waits and overwrites the oldest; what was overtaken or never written reads as
/// silence. (Samples are relaxed atomics between two announcements of the writer's place, as in
/// support::HistoryRing.) Threads: one writer, the callback; any readers.
class SampleTap {
 public:
  /// 0.74 s at 44.1 kHz, more than an output holds back.
  static constexpr std::int64_t kFrames = 1 << 15;

  /// frame: engine frame of the first one; each call begins at or behind the end of the last.
  void Write(std::int64_t frame, std::span<const float> stereo) noexcept;
  /// Fills the span with the frames before `end`.
  void Read(std::int64_t end, std::span<float> stereo) const noexcept;

 private:
  std::array<std::atomic<std::uint64_t>, kFrames> frames_{};  ///< left and right in one word
  std::atomic<std::int64_t> begin_{0};                        ///< of the unbroken run that ends at end_
  std::atomic<std::int64_t> end_{0};
  std::atomic<std::int64_t> announced_{0};  ///< the end of what is being written
};

}  // namespace engine
