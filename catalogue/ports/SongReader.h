// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <string>

#include "support/Result.h"

namespace catalogue {

/// What a row is made of for a song of MIDI events. Absent text is empty.
struct SongFacts {
  std::string artist;
  std::string title;
  std::string genre;
  std::chrono::milliseconds length{0};
};

/// Reads songs of MIDI events.
/// Threads: any; blocks on the disk.
class SongReader {
 public:
  virtual ~SongReader() = default;
  /// Fails when the file is missing, unreadable, or no song at all.
  virtual support::Result<SongFacts> Read(const std::string& path) = 0;
};

}  // namespace catalogue
