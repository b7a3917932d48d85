// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace engine {

/// How much room a disk has. Threads: any; may block on the disk.
class FreeSpace {
 public:
  virtual ~FreeSpace() = default;
  /// Bytes that this user may still write on the disk of a file, which need not be there; nothing when the
  /// system does not tell.
  [[nodiscard]] virtual std::optional<std::int64_t> Of(const std::string& path) = 0;
  /// Bytes of the largest file that the disk of a file takes (sticks formatted with FAT: 4 GiB); nothing
  /// where that is more than anybody records.
  [[nodiscard]] virtual std::optional<std::int64_t> LargestFile(const std::string& path) = 0;
};

}  // namespace engine
