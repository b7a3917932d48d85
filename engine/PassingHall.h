// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "engine/PassingSound.h"
#include "engine/StereoRing.h"
#include "support/HistoryRing.h"

namespace engine {

/// The newest music of a pair of speakers on its way to head-phones on another device: as these hear it on
/// the same one, before what is spoken and before the limiter.
/// Threads: Write and Tell in the callback of the hall's device; any readers.
class PassingHall final : public PassingSound {
 public:
  explicit PassingHall(int sample_rate) : sample_rate_(sample_rate) {}

  /// frame: under which the first one was mixed.
  void Write(std::int64_t frame, std::span<const float> stereo) noexcept { ring_.Write(frame, stereo); }
  /// Once a callback, when all of it was written. frames: of this callback.
  void Tell(std::int64_t end, int frames, support::TimePoint at) noexcept {
    marks_.Write({end, at, sample_rate_, frames, 1});
  }

  [[nodiscard]] std::optional<PassingMark> Newest() const noexcept override { return marks_.Newest(); }
  void Read(std::int64_t from, std::span<float> stereo) const noexcept override {
    ring_.CopyOrSilence(from, stereo);
  }

 private:
  /// 1.4 s at 48 kHz: more than two devices may lie apart.
  static constexpr std::int64_t kFrames = 1 << 16;

  const int sample_rate_;
  StereoRing ring_{kFrames};
  support::HistoryRing<PassingMark, 8> marks_;
};

}  // namespace engine
