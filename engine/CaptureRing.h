// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <optional>
#include <span>

#include "support/Clock.h"
#include "support/HistoryRing.h"

namespace engine {

/// How far an input's recording had got, and when that was known.
struct CaptureMark {
  std::int64_t frames = 0;  ///< written so far, over all inputs
  support::TimePoint at{};
  int sample_rate = 0;
  int longest = 0;            ///< frames of the largest block of this input so far
  std::uint32_t opening = 0;  ///< counts the inputs; 0 is none yet
};

/// The newest sound of the microphone on its way from the callback that records to those that play.
///
/// Law: the writer never waits and overwrites the oldest; what was overtaken or never written reads as
/// silence. Threads: Begin and Write by the input, one at a time; any readers.
class CaptureRing {
 public:
  /// A third of a second at 192 kHz.
  static constexpr std::int64_t kFrames = 1 << 16;

  /// Another input records from now on, behind an eighth of a second of silence.
  void Begin(int sample_rate) noexcept;
  void Write(std::span<const float> mono, support::TimePoint now) noexcept;

  /// Nothing before the first Write, nor when writers overtook the reading.
  [[nodiscard]] std::optional<CaptureMark> Newest() const noexcept { return marks_.Newest(); }
  /// Fills the span with the frames from `from` on.
  void Read(std::int64_t from, std::span<float> mono) const noexcept;

 private:
  std::array<std::atomic<float>, kFrames> samples_{};
  std::atomic<std::int64_t> end_{0};
  std::atomic<std::int64_t> announced_{0};  ///< the end of what is being written
  CaptureMark mark_;                        ///< the writer's
  support::HistoryRing<CaptureMark, 8> marks_;
};

}  // namespace engine
