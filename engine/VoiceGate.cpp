// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/VoiceGate.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace engine {
namespace {

constexpr int kPartsInQuarter = 12;    // of 20 ms and a bit
constexpr float kFloorToOpen = 25.1F;  // 14 dB
constexpr float kOpenToClose = 0.25F;  // -6 dB
constexpr float kLowest = 1e-6F;       // -60 dB
constexpr float kHighest = 1e-3F;      // -30 dB
constexpr float kUnknown = 3.16e-5F;   // -45 dB

float PerFrame(double seconds, int sample_rate) {
  return static_cast<float>(1 / (seconds * sample_rate));
}

}  // namespace

NoiseFloor::NoiseFloor(int sample_rate) : part_frames_(std::max(1, sample_rate / 48)) {}

void NoiseFloor::Hear(float square) noexcept {
  sum_ += static_cast<double>(square);
  if (++frames_ == part_frames_) EndPart();
}

void NoiseFloor::EndPart() noexcept {
  const auto mean = static_cast<float>(sum_ / frames_);
  frames_ = 0;
  // Nothing at all is no room: the microphone is not open yet.
  if (std::exchange(sum_, 0) == 0) return;
  quietest_ = parts_ == 0 ? mean : std::min(quietest_, mean);
  if (++parts_ < kPartsInQuarter) return;
  parts_ = 0;
  quarters_[heard_++ % kQuarters] = quietest_;
  const auto end = quarters_.begin() + static_cast<std::ptrdiff_t>(std::min(heard_, kQuarters));
  lowest_ = *std::min_element(quarters_.begin(), end);
}

void NoiseFloor::Reset() noexcept {
  frames_ = parts_ = 0;
  sum_ = 0;
  heard_ = 0;
  lowest_ = 0;
}

VoiceGate::VoiceGate(int sample_rate)
    : smooth_(PerFrame(0.004, sample_rate)),
      rise_(PerFrame(0.003, sample_rate)),
      fall_(PerFrame(0.25, sample_rate)),
      hold_frames_(sample_rate / 4),
      floor_(sample_rate) {}

GateLevels VoiceGate::Now() const noexcept {
  if (!levels_.automatic) return levels_;
  const float floor = floor_.Lowest();
  const float open = floor > 0 ? std::clamp(floor * kFloorToOpen, kLowest, kHighest) : kUnknown;
  return {true, open, open * kOpenToClose};
}

void VoiceGate::Process(std::span<float> mono) noexcept {
  const GateLevels levels = Now();
  for (float& sample : mono) {
    const float square = sample * sample;
    floor_.Hear(square);
    square_ += (square - square_) * smooth_;
    if (square_ > levels.open) open_ = true;
    if (square_ > levels.close) {
      held_ = 0;
    } else if (open_ && ++held_ > hold_frames_) {
      open_ = false;
    }
    const bool passes = open_ || through_;
    gain_ = passes ? std::min(1.0F, gain_ + rise_) : std::max(0.0F, gain_ - fall_);
    sample *= gain_;
  }
}

void VoiceGate::Reset() noexcept {
  floor_.Reset();
  open_ = false;
  square_ = 0;
  held_ = 0;
  gain_ = 0;
}

}  // namespace engine
