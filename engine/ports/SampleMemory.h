// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace engine {

/// Room for decoded samples; destroying it gives the room back.
class SampleBlock {
 public:
  virtual ~SampleBlock() = default;
  [[nodiscard]] virtual std::span<std::int16_t> Samples() noexcept = 0;
};

/// Where long files go when memory should not hold them: blocks of a file that the system may page out.
/// Threads: any.
class SampleMemory {
 public:
  virtual ~SampleMemory() = default;
  /// Null when there is no room.
  [[nodiscard]] virtual std::unique_ptr<SampleBlock> Allocate(std::size_t samples) = 0;
  /// Brings a block back into memory before it is played; may block, so a worker calls it.
  virtual void Warm(SampleBlock& block) = 0;
};

}  // namespace engine
