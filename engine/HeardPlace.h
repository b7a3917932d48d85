// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "engine/Stream.h"

namespace engine {

/// What of a stream is at the loudspeaker at one engine frame, read from its log alone.
struct HeardPlace {
  std::int64_t source = 0;
  std::uint32_t place = 0;  ///< by its number, as it was asked for; 0: nothing was heard yet
  std::int64_t moved = 0;   ///< all jumps before it together
  double ratio = 1;         ///< source frames an engine frame
  bool ended = false;
  float left_peak = 0;  ///< of the last 20 ms
  float right_peak = 0;
};

/// Threads: any.
[[nodiscard]] HeardPlace ReadHeardPlace(const Stream& stream, std::int64_t heard_frame, int device_rate);

}  // namespace engine
