// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "support/Result.h"

namespace karaoke {

/// The longest disc image that is read: two and a half hours.
inline constexpr std::size_t kLongestDiscImage = 64 << 20;

/// Finds the graphics of a karaoke disc that belong to a song.
/// Threads: any; blocks on the disk.
class DiscImages {
 public:
  virtual ~DiscImages() = default;
  /// The packets, as they stand on the disc. song: the file that sounds. NotFound when there are none; what
  /// is longer than kLongestDiscImage is Unsupported, and never read.
  virtual support::Result<std::vector<std::uint8_t>> Of(const std::string& song) = 0;
};

}  // namespace karaoke
