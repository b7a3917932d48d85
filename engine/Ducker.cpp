// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Ducker.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

constexpr float kLeave = 0.02F;

}  // namespace

Ducker::Ducker(int sample_rate) : sample_rate_(sample_rate) {
  Set({});
}

void Ducker::Set(const DuckShape& shape) noexcept {
  shape_ = shape;
  const auto rate = static_cast<float>(sample_rate_);
  // A way of its own length for a depth of any: 6 dB at least, so that a small one is no step.
  const float way = std::max(shape.depth, 6.0F);
  fall_ = way / (std::max(shape.attack, 0.001F) * rate);
  rise_ = way / (std::max(shape.release, 0.001F) * rate);
  hold_frames_ = static_cast<int>(shape.hold * rate);
}

bool Ducker::Render(std::span<float> gains) noexcept {
  if (!speaks_ && now_ == 0) {
    leaving_ = false;
    silent_ = hold_frames_;
    return false;
  }
  const float leave = std::max(40.0F, shape_.depth) / (kLeave * static_cast<float>(sample_rate_));
  for (float& gain : gains) {
    silent_ = speaks_ ? 0 : std::min(silent_ + 1, hold_frames_ + 1);
    const bool down = silent_ <= hold_frames_ && !leaving_;
    const float target = down ? shape_.depth : 0;
    const float before = now_;
    if (now_ < target) now_ = std::min(target, now_ + fall_);
    if (now_ > target) now_ = std::max(target, now_ - (leaving_ ? leave : down ? fall_ : rise_));
    if (now_ != before) gain_ = now_ == 0 ? 1 : std::pow(10.0F, -now_ / 20);
    gain = gain_;
  }
  if (now_ == 0) leaving_ = false;
  return true;
}

}  // namespace engine
