// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

namespace engine {

/// What changes a stream's sound between its ring and its tap.
/// Threads: the callback; never blocks.
class StreamEffect {
 public:
  virtual ~StreamEffect() = default;
  /// Any number of frames.
  virtual void Process(std::span<float> stereo) noexcept = 0;
  /// The sound before the next block has nothing to do with it.
  virtual void Reset() noexcept {}
  /// It goes on giving sound where it is given none.
  [[nodiscard]] virtual bool Rings() const noexcept { return false; }
};

}  // namespace engine
