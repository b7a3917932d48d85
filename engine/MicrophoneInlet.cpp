// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/MicrophoneInlet.h"

#include <algorithm>
#include <cmath>

#include "support/RealtimeScope.h"

namespace engine {
namespace {

constexpr float kLoudest = 8;

float Sound(float sample) {
  return std::isfinite(sample) ? std::clamp(sample, -kLoudest, kLoudest) : 0;
}

float Mean(std::span<const float> frame) {
  float sum = 0;
  for (const float sample : frame) sum += Sound(sample);
  return sum / static_cast<float>(frame.size());
}

}  // namespace

void MicrophoneInlet::Begin(int channels, int sample_rate) noexcept {
  channels_ = static_cast<std::size_t>(std::max(1, channels));
  ring_.Begin(sample_rate);
}

void MicrophoneInlet::Capture(std::span<const float> interleaved) noexcept {
  const support::RealtimeScope realtime;
  const support::TimePoint now = clock_.Now();
  const auto wanted = static_cast<std::size_t>(std::max(0, channel_.load(std::memory_order_relaxed)));
  const std::size_t channel = wanted > channels_ ? 1 : wanted;
  std::size_t count = 0;
  for (std::size_t at = 0; at + channels_ <= interleaved.size(); at += channels_) {
    const auto frame = interleaved.subspan(at, channels_);
    mono_[count++] = channel == 0 ? Mean(frame) : Sound(frame[channel - 1]);
    if (count == kMostFrames) {
      ring_.Write(mono_, now);
      count = 0;
    }
  }
  if (count > 0) ring_.Write({mono_.data(), count}, now);
}

}  // namespace engine
