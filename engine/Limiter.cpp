// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Limiter.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

constexpr std::int64_t kUnity = std::int64_t{1} << 30;
constexpr double kLookAheadSeconds = 0.0015;
constexpr double kReleaseSeconds = 0.08;

}  // namespace

Limiter::Limiter(int sample_rate, int max_channels)
    : look_ahead_(std::max(1, static_cast<int>(sample_rate * kLookAheadSeconds))),
      release_(1 - std::exp(-1 / (kReleaseSeconds * sample_rate))),
      delayed_(static_cast<std::size_t>(look_ahead_ * max_channels)),
      needed_(static_cast<std::size_t>(look_ahead_ + 1)),
      gains_(static_cast<std::size_t>(look_ahead_)) {
  Reset();
}

void Limiter::Reset() noexcept {
  std::fill(delayed_.begin(), delayed_.end(), 0.0F);
  std::fill(needed_.begin(), needed_.end(), 1.0);
  std::fill(gains_.begin(), gains_.end(), kUnity);
  gain_sum_ = look_ahead_ * kUnity;
  at_ = 0;
  needed_at_ = 0;
  envelope_ = 1;
  busy_ = false;
}

void Limiter::Process(std::span<float> interleaved, int channels) noexcept {
  const std::size_t width = static_cast<std::size_t>(channels);
  for (std::size_t frame = 0; frame + width <= interleaved.size(); frame += width) {
    float peak = 0;
    for (std::size_t c = 0; c < width; ++c) peak = std::max(peak, std::abs(interleaved[frame + c]));
    const float gain = peak > 1 || busy_ ? GainFor(peak > 1 ? 1 / peak : 1) : 1;
    float* held = delayed_.data() + at_ * width;
    for (std::size_t c = 0; c < width; ++c) {
      const float out = gain == 1 ? held[c] : std::clamp(held[c] * gain, -1.0F, 1.0F);
      held[c] = interleaved[frame + c];
      interleaved[frame + c] = out;
    }
    if (++at_ == static_cast<std::size_t>(look_ahead_)) at_ = 0;
  }
}

float Limiter::GainFor(float needed) noexcept {
  envelope_ = std::min<double>(needed, envelope_ + (1 - envelope_) * release_);
  if (envelope_ > 0.9999 && needed == 1) envelope_ = 1;
  needed_[needed_at_] = envelope_;
  if (++needed_at_ == needed_.size()) needed_at_ = 0;
  const double lowest = *std::min_element(needed_.begin(), needed_.end());
  const std::int64_t gain = static_cast<std::int64_t>(lowest * static_cast<double>(kUnity));
  gain_sum_ += gain - gains_[at_];
  gains_[at_] = gain;
  busy_ = gain_sum_ != look_ahead_ * kUnity || envelope_ != 1;
  return busy_ ? static_cast<float>(static_cast<double>(gain_sum_) /
                                    (static_cast<double>(look_ahead_) * static_cast<double>(kUnity)))
               : 1.0F;
}

}  // namespace engine
