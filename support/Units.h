// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <compare>
#include <cstdint>

namespace support {

/// Ratio on a logarithmic scale; 0 is full scale, below is negative.
struct Decibels {
  float value = 0;
  auto operator<=>(const Decibels&) const = default;
};

/// Beats a minute.
struct Bpm {
  double value = 0;
  auto operator<=>(const Bpm&) const = default;
};

/// Offset in a stream's 16-bit interleaved samples, in bytes. 64 bits: three hours pass 2 GB.
struct BytePosition {
  std::int64_t value = 0;
  auto operator<=>(const BytePosition&) const = default;
};

/// Frames of a file at the file's own rate. A frame is one sample of every channel.
struct SourceFrame {
  std::int64_t value = 0;
  auto operator<=>(const SourceFrame&) const = default;
};

/// Frames that one output device was given since the engine opened it, at the engine's rate.
struct EngineFrame {
  std::int64_t value = 0;
  auto operator<=>(const EngineFrame&) const = default;
};

}  // namespace support
