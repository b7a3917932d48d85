// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "support/Result.h"
#include "support/Sentences.h"

namespace catalogue {

/// What the open button of a playlist makes of a file, told by the last letters of its name.
enum class PlaylistFile {
  Track,    ///< "MP3", "OGG", "WMA" or "FLAC"
  Own,      ///< "TPL": the whole table
  List,     ///< "M3U" or "M3U8": a path a line
  Nothing,  ///< any other; nothing is added
};
[[nodiscard]] PlaylistFile PlaylistFileOf(std::string_view path);

/// The paths of an M3U or M3U8, byte for byte as they stand.
struct PathList {
  std::vector<std::string> paths;
  int too_long = 0;  ///< lines longer than any path, left out
};

/// Reads a list of paths piece by piece: one a line, whatever its end; lines that begin with "#" and empty
/// ones are no paths.
class PathListParser {
 public:
  /// Longer than any system's path.
  static constexpr std::size_t kLongestPath = 65'535;

  void Feed(std::string_view piece);
  /// Takes a last line without an end. Nothing is fed after that.
  [[nodiscard]] PathList Finish();

 private:
  void Grow(std::string_view part);
  void EndLine();

  std::string line_;
  bool too_long_ = false;
  PathList list_;
};

/// Threads: a worker; blocks on the disk.
[[nodiscard]] support::Result<PathList> ReadPathList(const std::filesystem::path& path);

/// Whether a file that was called a table of tracks begins as a list of paths does.
[[nodiscard]] bool LooksLikePathList(const std::filesystem::path& path);

}  // namespace catalogue
