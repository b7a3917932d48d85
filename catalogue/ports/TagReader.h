// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "support/Result.h"

namespace catalogue {

/// A user text item of a tag: ID3v2 TXXX, a Vorbis comment, an ASF attribute, an MP4 freeform item.
struct TagItem {
  std::string name;
  std::string value;
};

/// What a file's tag and header tell. Absent text is empty, absent numbers are 0.
struct FileTags {
  std::string artist;
  std::string title;
  std::string album;
  std::string genre;
  std::string year;
  std::string bpm;
  std::string text_block;  ///< the comment field, which carries the block of mixing tags
  std::vector<TagItem> user_items;
  std::chrono::milliseconds duration{0};
  int bit_rate = 0;     ///< kbit/s
  int sample_rate = 0;  ///< Hz
};

/// Analyses an audio file.
/// Threads: any; blocks on the disk.
class TagReader {
 public:
  virtual ~TagReader() = default;
  /// Fails when the file is missing, unreadable, or no audio file that the program plays.
  virtual support::Result<FileTags> Read(const std::string& path) = 0;
};

}  // namespace catalogue
