// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "support/Result.h"

namespace support {

/// Puts a whole file in the place of another: written beside it, flushed to the disk, then swapped in. The
/// old file is there until the new one is complete, whenever the power goes. Threads: any; blocks on the
/// disk.
class FileSaver {
 public:
  virtual ~FileSaver() = default;
  /// On failure the old file stands as it was and nothing is left beside it.
  virtual Result<void> Save(const std::filesystem::path& path, std::string_view content) = 0;

  /// As Save, but waits for no disk: the file is whole whatever becomes of the program, and after a power cut
  /// the old one, the new one or an incomplete one may be there. For what is written every moment.
  virtual Result<void> SaveSwiftly(const std::filesystem::path& path, std::string_view content) {
    return Save(path, content);
  }

  /// Gives the content piece by piece, an empty one at its end. A piece is taken before the next is asked
  /// for.
  using Pieces = std::function<std::string_view()>;
  /// As Save; a saver that can do so never holds the whole content.
  virtual Result<void> SavePieces(const std::filesystem::path& path, const Pieces& next) {
    std::string content;
    for (std::string_view piece = next(); !piece.empty(); piece = next()) content += piece;
    return Save(path, content);
  }
};

}  // namespace support
