// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ProgrammeTap.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace engine {
namespace {

using StereoFrame = std::array<float, 2>;

std::size_t PlaceOf(std::int64_t frame) {
  return static_cast<std::size_t>(frame & (ProgrammeTap::kFrames - 1));
}

}  // namespace

ProgrammeTap::ProgrammeTap()
    : frames_(std::make_unique<std::atomic<std::uint64_t>[]>(static_cast<std::size_t>(kFrames))) {
  // The first frames that a core gives were mixed before its frame 0.
  constexpr std::int64_t kBeforeAll = std::numeric_limits<std::int64_t>::min() / 2;
  for (auto* place : {&begin_, &end_, &announced_}) place->store(kBeforeAll, std::memory_order_relaxed);
}

void ProgrammeTap::Write(std::int64_t frame, std::span<const float> stereo) noexcept {
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

ProgrammeReader::ProgrammeReader(std::shared_ptr<ProgrammeTap> tap, int sample_rate)
    : tap_(std::move(tap)), sample_rate_(sample_rate), next_(Written()) {
  tap_->readers_.fetch_add(1, std::memory_order_relaxed);
}

ProgrammeReader::~ProgrammeReader() {
  tap_->readers_.fetch_sub(1, std::memory_order_relaxed);
}

void ProgrammeReader::SkipTo(std::int64_t frame, Taken& taken) noexcept {
  if (frame <= next_) return;
  if (begun_) taken.lost += frame - next_;
  next_ = frame;
}

ProgrammeReader::Taken ProgrammeReader::Read(std::span<float> stereo, std::int64_t end) noexcept {
  Taken taken;
  const std::int64_t written = Written();
  SkipTo(tap_->begin_.load(std::memory_order_relaxed), taken);
  SkipTo(written - ProgrammeTap::kFrames, taken);
  const std::int64_t count = std::clamp<std::int64_t>(std::min(written, end) - next_, 0,
                                                      static_cast<std::int64_t>(stereo.size() / 2));
  for (std::int64_t i = 0; i < count; ++i) {
    const auto frame =
        std::bit_cast<StereoFrame>(tap_->frames_[PlaceOf(next_ + i)].load(std::memory_order_relaxed));
    std::copy(frame.begin(), frame.end(), stereo.begin() + static_cast<std::ptrdiff_t>(2 * i));
  }
  std::atomic_thread_fence(std::memory_order_acquire);
  const std::int64_t kept_from = tap_->announced_.load(std::memory_order_relaxed) - ProgrammeTap::kFrames;
  // What was overwritten while it was read is newer sound at an older place.
  const std::int64_t spoilt = std::clamp<std::int64_t>(kept_from - next_, 0, count);
  std::copy(stereo.begin() + static_cast<std::ptrdiff_t>(2 * spoilt),
            stereo.begin() + static_cast<std::ptrdiff_t>(2 * count), stereo.begin());
  SkipTo(next_ + spoilt, taken);
  taken.first = next_;
  taken.frames = static_cast<std::size_t>(count - spoilt);
  next_ += count - spoilt;
  if (count > 0) begun_ = true;
  return taken;
}

}  // namespace engine
