// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "engine/Lane.h"
#include "engine/Stream.h"
#include "engine/ports/Stretcher.h"
#include "music/Loop.h"

namespace engine {

/// What a segment goes through on its way to a lane. Each change of it is a new segment.
struct SegmentPath {
  bool resampled = false;
  bool stretched = false;
  StretchQuality quality = StretchQuality::Best;
  bool operator==(const SegmentPath&) const = default;
};

/// Makes the blocks of one lane: from one place on, at the device's rate, in stereo.
/// Threads: the feeder. Law: a block's source frame comes from adding up ratios.
class BlockSource {
 public:
  virtual ~BlockSource() = default;
  [[nodiscard]] virtual SegmentPath PathOf(const Tempo& tempo) const = 0;
  /// loop: none once the place lies behind it.
  virtual void Begin(std::int64_t frame, const Tempo& tempo, const std::optional<music::Loop>& loop) = 0;
  /// Requires: PathOf(tempo) is that of Begin.
  virtual void SetTempo(const Tempo& tempo) = 0;
  [[nodiscard]] virtual const Tempo& InForce() const noexcept = 0;
  /// The source's frame under the next frame made.
  [[nodiscard]] virtual double Source() const noexcept = 0;
  /// The same, had no loop taken it back since Begin.
  [[nodiscard]] virtual double Line() const noexcept = 0;
  /// The source's frames a frame.
  [[nodiscard]] virtual double Ratio() const noexcept = 0;
  [[nodiscard]] virtual bool Ended() const noexcept = 0;
  /// Up to that many frames; false when there is nothing to make them of yet. Requires: !Ended().
  virtual bool Make(LaneBlock& block, int frames) = 0;
};

}  // namespace engine
