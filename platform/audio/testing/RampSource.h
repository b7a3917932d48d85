// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <span>
#include <vector>

#include "engine/ports/OutputDevice.h"

namespace platform::audio::testing {

/// A signal in which every frame and every channel can be told from its neighbours: frame n holds
/// (n mod 2000) + 1 on the first channel and 3000 more on each further one, in steps of 16 bits.
/// Threads: Render as the port says (it locks, so it is for tests of the outputs alone); the rest from any.
class RampSource final : public engine::RenderSource {
 public:
  explicit RampSource(int channels) : channels_(channels) {}

  void Render(std::span<float> interleaved) noexcept override {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::size_t i = 0;
    while (i < interleaved.size()) {
      for (int c = 0; c < channels_; ++c) {
        interleaved[i++] = static_cast<float>(frames_ % 2000 + 1 + 3000 * c) / 32768.0F;
      }
      ++frames_;
    }
    largest_block_ = std::max(largest_block_, interleaved.size() / static_cast<std::size_t>(channels_));
    rendered_.notify_all();
  }

  [[nodiscard]] std::int64_t Frames() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return frames_;
  }
  [[nodiscard]] std::size_t LargestBlock() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return largest_block_;
  }
  /// Waits until so many frames were asked for in all; false when the time is over first.
  bool AwaitFrames(std::int64_t frames, std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    std::unique_lock<std::mutex> lock(mutex_);
    return rendered_.wait_for(lock, limit, [&] { return frames_ >= frames; });
  }

 private:
  int channels_;
  mutable std::mutex mutex_;
  std::condition_variable rendered_;
  std::int64_t frames_ = 0;
  std::size_t largest_block_ = 0;
};

/// What a recording of a ramp holds, silent frames left out.
struct RampReport {
  std::size_t frames = 0;     ///< that sound
  std::size_t jumps = 0;      ///< frames that do not follow their predecessor: lost, repeated or swapped ones
  std::size_t misplaced = 0;  ///< frames with a channel that holds another channel's sample
  std::int16_t first = 0;     ///< sample of the first channel
};

[[nodiscard]] inline RampReport ReadRamp(const std::vector<std::int16_t>& recorded, int channels) {
  RampReport report;
  std::int16_t last = 0;
  const auto width = static_cast<std::size_t>(channels);
  for (std::size_t i = 0; i + width <= recorded.size(); i += width) {
    const std::int16_t value = recorded[i];
    if (std::all_of(&recorded[i], &recorded[i] + width, [](std::int16_t s) { return s == 0; })) continue;
    if (report.frames++ == 0) {
      report.first = value;
    } else if (value != last % 2000 + 1) {
      ++report.jumps;
    }
    for (int c = 1; c < channels; ++c) {
      if (recorded[i + static_cast<std::size_t>(c)] != value + 3000 * c) {
        ++report.misplaced;
        break;
      }
    }
    last = value;
  }
  return report;
}

}  // namespace platform::audio::testing
