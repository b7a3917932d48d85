// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ProgrammeTap.h"

#include <algorithm>
#include <utility>

namespace engine {

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
  SkipTo(tap_->ring_.Begin(), taken);
  SkipTo(written - ProgrammeTap::kFrames, taken);
  const std::int64_t count = std::clamp<std::int64_t>(std::min(written, end) - next_, 0,
                                                      static_cast<std::int64_t>(stereo.size() / 2));
  const std::int64_t spoilt = tap_->ring_.Copy(next_, stereo.first(static_cast<std::size_t>(2 * count)));
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
