// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/SampleTap.h"

#include <algorithm>
#include <bit>

namespace engine {
namespace {

using StereoFrame = std::array<float, 2>;

std::size_t SlotOf(std::int64_t frame) {
  return static_cast<std::size_t>(frame & (SampleTap::kFrames - 1));
}

}  // namespace

void SampleTap::Write(std::int64_t frame, std::span<const float> stereo) noexcept {
  const std::int64_t end = frame + static_cast<std::int64_t>(stereo.size() / 2);
  if (frame != end_.load(std::memory_order_relaxed)) begin_.store(frame, std::memory_order_relaxed);
  announced_.store(end, std::memory_order_relaxed);
  std::atomic_thread_fence(std::memory_order_release);
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2, ++frame) {
    const auto word = std::bit_cast<std::uint64_t>(StereoFrame{stereo[i], stereo[i + 1]});
    frames_[SlotOf(frame)].store(word, std::memory_order_relaxed);
  }
  end_.store(end, std::memory_order_release);
}

void SampleTap::Read(std::int64_t end, std::span<float> stereo) const noexcept {
  const std::int64_t first = end - static_cast<std::int64_t>(stereo.size() / 2);
  const std::int64_t written = end_.load(std::memory_order_acquire);
  const std::int64_t begin = begin_.load(std::memory_order_relaxed);
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2) {
    const std::int64_t frame = first + static_cast<std::int64_t>(i / 2);
    StereoFrame sample{};
    if (frame >= begin && frame < written) {
      sample = std::bit_cast<StereoFrame>(frames_[SlotOf(frame)].load(std::memory_order_relaxed));
    }
    std::copy(sample.begin(), sample.end(), stereo.begin() + static_cast<std::ptrdiff_t>(i));
  }
  std::atomic_thread_fence(std::memory_order_acquire);
  const std::int64_t overtaken = announced_.load(std::memory_order_relaxed) - kFrames - first;
  const auto lost = static_cast<std::ptrdiff_t>(
      2 * std::clamp<std::int64_t>(overtaken, 0, static_cast<std::int64_t>(stereo.size() / 2)));
  std::fill(stereo.begin(), stereo.begin() + lost, 0.0F);
}

}  // namespace engine
