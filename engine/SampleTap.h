// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

#include "engine/StereoRing.h"

namespace engine {

/// The newest sound of a stream, kept until it is heard, so that others can look at it. What was overtaken or
/// never written reads as silence. Threads: one writer, the callback; any readers.
class SampleTap {
 public:
  /// 0.74 s at 44.1 kHz, more than an output holds back.
  static constexpr std::int64_t kFrames = 1 << 15;

  /// frame: engine frame of the first one; each call begins at or behind the end of the last.
  void Write(std::int64_t frame, std::span<const float> stereo) noexcept { ring_.Write(frame, stereo); }
  /// Fills the span with the frames before `end`.
  void Read(std::int64_t end, std::span<float> stereo) const noexcept {
    ring_.CopyOrSilence(end - static_cast<std::int64_t>(stereo.size() / 2), stereo);
  }

 private:
  StereoRing ring_{kFrames};
};

}  // namespace engine
