// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Limiter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace engine {
namespace {

constexpr std::int64_t kUnity = std::int64_t{1} << 30;
constexpr double kLookAheadSeconds = 0.0015;
constexpr double kReleaseSeconds = 0.08;

}  // namespace

double Limiter::SlidingLowest::Put(double value) noexcept {
  while (count_ > 0 && kept_[Wrapped(begin_ + count_ - 1)].value >= value) --count_;
  if (count_ > 0 && kept_[begin_].number <= number_ - length_) {
    begin_ = Wrapped(begin_ + 1);
    --count_;
  }
  kept_[Wrapped(begin_ + count_++)] = {number_++, value};
  return kept_[begin_].value;
}

Limiter::Limiter(int sample_rate, float ceiling)
    : ceiling_(ceiling),
      look_ahead_(std::max(1, static_cast<int>(sample_rate * kLookAheadSeconds))),
      late_(look_ahead_ + TruePeak::kDelay),
      release_(1 - std::exp(-1 / (kReleaseSeconds * sample_rate))),
      delayed_(static_cast<std::size_t>(2 * late_)),
      lowest_(look_ahead_ + 2),  // of the frame on either side of a height between two
      gains_(static_cast<std::size_t>(look_ahead_)) {
  Reset();
}

void Limiter::Reset() noexcept {
  reader_.Reset();
  std::fill(delayed_.begin(), delayed_.end(), 0.0F);
  std::fill(gains_.begin(), gains_.end(), kUnity);
  lowest_.Clear();
  gain_sum_ = look_ahead_ * kUnity;
  envelope_ = 1;
  busy_ = false;
  told_ = 1;
}

void Limiter::Process(std::span<float> stereo) noexcept {
  const std::span<float> peaks(peaks_.data(), stereo.size() / 2);
  reader_.Read(stereo, peaks, ceiling_);
  for (std::size_t frame = 0; frame < peaks.size(); ++frame) {
    const float peak = peaks[frame];
    const float gain = peak > ceiling_ || busy_ ? GainFor(peak > ceiling_ ? ceiling_ / peak : 1) : 1;
    told_ = std::min(told_, gain);
    for (float* sample : {&stereo[2 * frame], &stereo[2 * frame + 1]}) {
      float& held = delayed_[delayed_at_++];
      const float out = gain == 1 ? held : std::clamp(held * gain, -ceiling_, ceiling_);
      held = *sample;
      *sample = out;
    }
    if (delayed_at_ == delayed_.size()) delayed_at_ = 0;
  }
}

float Limiter::GainFor(float needed) noexcept {
  envelope_ = std::min<double>(needed, envelope_ + (1 - envelope_) * release_);
  if (envelope_ > 0.9999 && needed == 1) envelope_ = 1;
  const std::int64_t gain = static_cast<std::int64_t>(lowest_.Put(envelope_) * static_cast<double>(kUnity));
  gain_sum_ += gain - gains_[gains_at_];
  gains_[gains_at_] = gain;
  if (++gains_at_ == gains_.size()) gains_at_ = 0;
  busy_ = gain_sum_ != look_ahead_ * kUnity || envelope_ != 1;
  if (busy_) {
    return static_cast<float>(static_cast<double>(gain_sum_) /
                              (static_cast<double>(look_ahead_) * static_cast<double>(kUnity)));
  }
  lowest_.Clear();
  return 1;
}

float Limiter::TakeLowest() noexcept {
  return std::exchange(told_, 1.0F);
}

}  // namespace engine
