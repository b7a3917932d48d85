// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <span>

#include "engine/CaptureRing.h"
#include "engine/ports/InputDevice.h"
#include "support/Clock.h"

namespace engine {

/// Takes one channel of an input, or the mean of all, to the ring. What is no number counts as silence.
/// Threads: Begin while nothing records; Choose any; Capture the input's callback.
class MicrophoneInlet final : public CaptureSink {
 public:
  MicrophoneInlet(CaptureRing& ring, const support::Clock& clock) : ring_(ring), clock_(clock) {}

  void Begin(int channels, int sample_rate) noexcept;
  /// From 1; one that the input lacks is its first, 0 the mean of all.
  void Choose(int channel) noexcept { channel_.store(channel, std::memory_order_relaxed); }
  void Capture(std::span<const float> interleaved) noexcept override;

 private:
  static constexpr std::size_t kMostFrames = 2048;

  CaptureRing& ring_;
  const support::Clock& clock_;
  std::size_t channels_ = 1;
  std::atomic<int> channel_{1};
  std::array<float, kMostFrames> mono_{};
};

}  // namespace engine
