// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <taglib/tiostream.h>

#include <chrono>
#include <optional>

namespace platform::tags {

struct MpegLength {
  std::chrono::milliseconds duration{0};
  int bit_rate = 0;  ///< kbit/s, the mean
};

/// The length of an MPEG layer III stream whose frames differ in bit rate, counted frame by frame from the
/// first one on. Nothing when the bit rate stands still over the first frames: then the header of one frame
/// tells the length, and the file need not be read. Leaves the stream anywhere.
[[nodiscard]] std::optional<MpegLength> CountVariableFrames(TagLib::IOStream& stream, long first_frame);

}  // namespace platform::tags
