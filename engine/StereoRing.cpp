// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/StereoRing.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <limits>

namespace engine {
namespace {

using StereoFrame = std::array<float, 2>;

// The first frames that a core gives were mixed before its frame 0.
constexpr std::int64_t kBeforeAll = std::numeric_limits<std::int64_t>::min() / 2;

}  // namespace

StereoRing::StereoRing(std::int64_t frames)
    : mask_(frames - 1),
      frames_(std::make_unique<std::atomic<std::uint64_t>[]>(static_cast<std::size_t>(frames))),
      begin_(kBeforeAll),
      end_(kBeforeAll),
      announced_(kBeforeAll) {
  assert((frames & mask_) == 0 && "a power of two");
}

void StereoRing::Write(std::int64_t frame, std::span<const float> stereo) noexcept {
  const std::int64_t end = frame + static_cast<std::int64_t>(stereo.size() / 2);
  if (frame != end_.load(std::memory_order_relaxed)) begin_.store(frame, std::memory_order_relaxed);
  announced_.store(end, std::memory_order_relaxed);
  std::atomic_thread_fence(std::memory_order_release);
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2, ++frame) {
    const auto word = std::bit_cast<std::uint64_t>(StereoFrame{stereo[i], stereo[i + 1]});
    frames_[PlaceOf(frame)].store(word, std::memory_order_relaxed);
  }
  end_.store(end, std::memory_order_release);
}

std::int64_t StereoRing::Copy(std::int64_t from, std::span<float> stereo) const noexcept {
  const std::int64_t first = from;
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2, ++from) {
    const auto frame = std::bit_cast<StereoFrame>(frames_[PlaceOf(from)].load(std::memory_order_relaxed));
    stereo[i] = frame[0];
    stereo[i + 1] = frame[1];
  }
  std::atomic_thread_fence(std::memory_order_acquire);
  const std::int64_t kept_from = announced_.load(std::memory_order_relaxed) - Frames();
  return std::clamp<std::int64_t>(kept_from - first, 0, from - first);
}

void StereoRing::CopyOrSilence(std::int64_t from, std::span<float> stereo) const noexcept {
  const auto frames = static_cast<std::int64_t>(stereo.size() / 2);
  const std::int64_t end = End();
  const auto before = std::clamp<std::int64_t>(Begin() - from, 0, frames);
  const auto there = std::clamp<std::int64_t>(end - from, before, frames);
  const auto at = [&](std::int64_t frame) { return stereo.begin() + static_cast<std::ptrdiff_t>(2 * frame); };
  const std::int64_t spoilt = Copy(from + before, {at(before), at(there)});
  std::fill(at(0), at(before + spoilt), 0.0F);
  std::fill(at(there), stereo.end(), 0.0F);
}

}  // namespace engine
