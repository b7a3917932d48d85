// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <optional>
#include <span>

#include "engine/PassingSound.h"
#include "support/Clock.h"
#include "support/HistoryRing.h"

namespace engine {

/// The newest sound of the microphone on its way from the callback that records to those that play.
///
/// Law: the writer never waits and overwrites the oldest; what was overtaken or never written reads as
/// silence. Threads: Begin and Write by the input, one at a time; any readers.
class CaptureRing final : public PassingSound {
 public:
  /// A third of a second at 192 kHz.
  static constexpr std::int64_t kFrames = 1 << 16;

  /// Another input records from now on, behind an eighth of a second of silence.
  void Begin(int sample_rate) noexcept;
  void Write(std::span<const float> mono, support::TimePoint now) noexcept;

  /// Frames are counted over all inputs; the longest block is that of this input so far.
  [[nodiscard]] std::optional<PassingMark> Newest() const noexcept override { return marks_.Newest(); }
  void Read(std::int64_t from, std::span<float> mono) const noexcept override;

 private:
  std::array<std::atomic<float>, kFrames> samples_{};
  std::atomic<std::int64_t> end_{0};
  std::atomic<std::int64_t> announced_{0};  ///< the end of what is being written
  PassingMark mark_;                        ///< the writer's
  support::HistoryRing<PassingMark, 8> marks_;
};

}  // namespace engine
