// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "support/Result.h"

namespace catalogue {

/// In the program folder, as the index files.
inline constexpr std::string_view kSideStore = "\\tlv.side";

/// What tells one state of a file from another.
struct FileStamp {
  std::int64_t size = 0;      ///< bytes
  std::int64_t modified = 0;  ///< in the file system's own units
  bool operator==(const FileStamp&) const = default;
};

/// What is kept of a file; each part is written and read by itself. Music and Karaoke are kept of a folder:
/// what a scan in that mode found in it. DiscImage is the path of the image that a karaoke mp3 belongs to.
/// Content is the text of the file's sound, and LastPath, kept of the sound, where it was last. LyricCoding
/// is the code page that was chosen for a song's words. Form is the key, the bars and the sections.
enum class SidePart {
  Facts,
  Wave,
  Grid,
  Marks,
  Music,
  Karaoke,
  DiscImage,
  Content,
  LastPath,
  LyricCoding,
  Form
};

/// In the place of a path: what is kept of this sound, whatever file it lies in. No path begins like that.
[[nodiscard]] inline std::string PathOfContent(const std::string& content) {
  return std::string(1, '\0') + content;
}

struct SideEntry {
  std::string path;
  FileStamp stamp;
  SidePart part;
  std::string bytes;
};

/// Keeps what was found out about files beside the index, so that it is found out once.
///
/// Law: bytes come back as they were written, or not at all: what was written of another state of a file, or
/// cannot be read any more, is not there. Threads: any; may block on the disk.
class SideStore {
 public:
  virtual ~SideStore() = default;
  /// Nothing for a file that is not there.
  [[nodiscard]] virtual std::optional<FileStamp> StampOf(const std::string& path) = 0;
  [[nodiscard]] virtual std::optional<std::string> Read(const std::string& path, const FileStamp& stamp,
                                                        SidePart part) = 0;
  /// What tells the sound of a file from any other, whatever its tags say: another program may write them,
  /// and it stays. Reads three places of the file. Nothing for one that cannot be read.
  [[nodiscard]] virtual std::optional<std::string> ContentOf(const std::string& path) = 0;
  /// Whether anything is kept of any sound.
  [[nodiscard]] virtual bool KeepsSounds() = 0;
  /// The same as ContentOf, but nothing for a sound of which nothing is kept, which mostly is told by its
  /// size.
  [[nodiscard]] virtual std::optional<std::string> KeptContentOf(const std::string& path) = 0;
  /// Replaces the part, and drops all parts that were written with another stamp.
  virtual support::Result<void> Write(const std::string& path, const FileStamp& stamp, SidePart part,
                                      std::string_view bytes) = 0;
  /// The same for many at once, all of them or none where the store can.
  virtual support::Result<void> WriteAll(std::span<const SideEntry> entries) {
    for (const SideEntry& entry : entries) {
      if (auto written = Write(entry.path, entry.stamp, entry.part, entry.bytes); !written) return written;
    }
    return {};
  }
};

}  // namespace catalogue
