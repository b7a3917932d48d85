// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace platform::codec {

/// Where a FLAC file that begins with its stream tells its number of frames (RFC 9639, 8.2).
inline constexpr std::size_t kFlacLengthPlace = 21;
/// What stands there; bits: of a sample.
[[nodiscard]] std::array<std::uint8_t, 5> FlacLength(std::int64_t frames, int bits);

/// The end of the last whole frame of a stream of frames of one size.
struct FlacEnd {
  std::size_t place = 0;    ///< in the bytes that were looked at
  std::int64_t frames = 0;  ///< of sound before it
};
/// bytes: the last ones of the file, which begin anywhere; block: frames of sound in each frame of the
/// stream. Nothing when no frame begins there. (RFC 9639, 9.1 and 9.3)
[[nodiscard]] std::optional<FlacEnd> FindFlacEnd(std::span<const std::uint8_t> bytes, int block);

}  // namespace platform::codec
