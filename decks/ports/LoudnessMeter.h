// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "music/Loudness.h"

namespace decks {

/// Measures one track by EBU R128 while its samples come piece by piece. Threads: one at a time.
class LoudnessMeter {
 public:
  virtual ~LoudnessMeter() = default;
  /// Whole frames, interleaved, in pieces of any size.
  virtual void Add(std::span<const std::int16_t> samples) = 0;
  /// Of all that was added; nothing is added after that.
  [[nodiscard]] virtual music::Loudness Finish() = 0;
};

/// Threads: any.
class LoudnessMeters {
 public:
  virtual ~LoudnessMeters() = default;
  /// Null for a format that cannot be measured.
  [[nodiscard]] virtual std::unique_ptr<LoudnessMeter> Make(int sample_rate, int channels) = 0;
};

}  // namespace decks
