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
  virtual void Process(std::span<float> stereo) noexcept = 0;
};

}  // namespace engine
