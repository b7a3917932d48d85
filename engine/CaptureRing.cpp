// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/CaptureRing.h"

#include <algorithm>

namespace engine {
namespace {

std::size_t CellOf(std::int64_t frame) {
  return static_cast<std::size_t>(frame & (CaptureRing::kFrames - 1));
}

}  // namespace

void CaptureRing::Begin(int sample_rate) noexcept {
  // Nobody hears the last one's end in front of the new one.
  for (int i = 0; i < std::min<int>(sample_rate / 8, kFrames / 2); ++i) {
    samples_[CellOf(mark_.frames++)].store(0, std::memory_order_relaxed);
  }
  mark_.sample_rate = sample_rate;
  mark_.longest = 0;
  ++mark_.opening;
}

void CaptureRing::Write(std::span<const float> mono, support::TimePoint now) noexcept {
  std::int64_t frame = mark_.frames;
  const std::int64_t end = frame + static_cast<std::int64_t>(mono.size());
  announced_.store(end, std::memory_order_relaxed);
  std::atomic_thread_fence(std::memory_order_release);
  for (const float sample : mono) samples_[CellOf(frame++)].store(sample, std::memory_order_relaxed);
  end_.store(end, std::memory_order_release);
  mark_.frames = end;
  mark_.at = now;
  mark_.longest = std::max(mark_.longest, static_cast<int>(mono.size()));
  marks_.Write(mark_);
}

void CaptureRing::Read(std::int64_t from, std::span<float> mono) const noexcept {
  const std::int64_t end = end_.load(std::memory_order_acquire);
  std::int64_t frame = from;
  for (float& sample : mono) {
    const bool there = frame >= 0 && frame < end;
    sample = there ? samples_[CellOf(frame)].load(std::memory_order_relaxed) : 0;
    ++frame;
  }
  std::atomic_thread_fence(std::memory_order_acquire);
  const std::int64_t overtaken = announced_.load(std::memory_order_relaxed) - kFrames - from;
  const auto lost = std::clamp<std::int64_t>(overtaken, 0, static_cast<std::int64_t>(mono.size()));
  std::fill_n(mono.begin(), static_cast<std::ptrdiff_t>(lost), 0.0F);
}

}  // namespace engine
