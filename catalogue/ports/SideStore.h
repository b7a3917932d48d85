// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
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

/// What is kept of a file; each part is written and read by itself.
enum class SidePart { Facts, Wave, Grid, Marks };

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
  /// Replaces the part, and drops all parts that were written with another stamp.
  virtual support::Result<void> Write(const std::string& path, const FileStamp& stamp, SidePart part,
                                      std::string_view bytes) = 0;
};

}  // namespace catalogue
