// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "support/Clock.h"

namespace engine {

/// How far a sound had got, and when that was known.
struct PassingMark {
  std::int64_t frames = 0;  ///< the end of what is written
  support::TimePoint at{};
  int sample_rate = 0;
  int longest = 0;            ///< frames of a large block of it
  std::uint32_t opening = 0;  ///< another number for another source; 0 is none yet
};

/// A sound on its way from the callback of one device to that of another, whose crystal is another.
/// Threads: one writer; any readers, which wait for nothing.
class PassingSound {
 public:
  virtual ~PassingSound() = default;
  /// Nothing before the first block, nor when writers overtook the reading.
  [[nodiscard]] virtual std::optional<PassingMark> Newest() const noexcept = 0;
  /// Fills the span with the frames from `from` on; silence for what is not there.
  virtual void Read(std::int64_t from, std::span<float> interleaved) const noexcept = 0;
};

}  // namespace engine
