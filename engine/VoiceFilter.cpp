// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/VoiceFilter.h"

#include <algorithm>
#include <cmath>

namespace engine {

using music::Biquad;

VoiceFilter::VoiceFilter(int sample_rate) : glide_frames_(std::max(1, sample_rate / 200)) {}

void VoiceFilter::Set(const Biquad& target) noexcept {
  if (target == target_) return;
  target_ = target;
  glide_left_ = glide_frames_;
  const auto part = [this](double from, double to) { return (to - from) / glide_frames_; };
  step_ = {part(now_.b0, target.b0), part(now_.b1, target.b1), part(now_.b2, target.b2),
           part(now_.a1, target.a1), part(now_.a2, target.a2)};
}

void VoiceFilter::Glide() noexcept {
  if (--glide_left_ == 0) {
    now_ = target_;
    return;
  }
  now_ = {now_.b0 + step_.b0, now_.b1 + step_.b1, now_.b2 + step_.b2, now_.a1 + step_.a1, now_.a2 + step_.a2};
}

void VoiceFilter::Remember(std::span<const float> mono) noexcept {
  for (const float sample : mono.last(std::min<std::size_t>(2, mono.size()))) {
    x2_ = y2_ = x1_;
    x1_ = y1_ = static_cast<double>(sample);
  }
}

void VoiceFilter::Process(std::span<float> mono) noexcept {
  // Behind two samples that passed as they came, a flat one has nothing left to say.
  if (glide_left_ == 0 && now_.IsFlat() && x1_ == y1_ && x2_ == y2_) return Remember(mono);
  for (float& sample : mono) {
    if (glide_left_ > 0) Glide();
    const double x = static_cast<double>(sample);
    const double y = now_.b0 * x + now_.b1 * x1_ + now_.b2 * x2_ - now_.a1 * y1_ - now_.a2 * y2_;
    x2_ = x1_;
    x1_ = x;
    y2_ = y1_;
    y1_ = y;
    sample = static_cast<float>(y);
  }
  constexpr double kInaudible = 1e-7;  // -140 dB
  if (glide_left_ == 0 && now_.IsFlat() && std::abs(y1_ - x1_) < kInaudible &&
      std::abs(y2_ - x2_) < kInaudible) {
    y1_ = x1_;
    y2_ = x2_;
  }
  if (!std::isfinite(y1_) || !std::isfinite(y2_)) x1_ = x2_ = y1_ = y2_ = 0;
}

void VoiceFilter::Reset() noexcept {
  now_ = target_;
  glide_left_ = 0;
  x1_ = x2_ = y1_ = y2_ = 0;
}

}  // namespace engine
