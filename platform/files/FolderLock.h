// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <variant>

namespace platform::files {

/// Who holds a folder, as far as he said.
struct FolderHolder {
  bool same_user = false;
  std::string user;   ///< the name; empty when it is not known
  std::string since;  ///< local date and time; empty when it is not known
};

/// Keeps other programs out of a folder while it lives, by a lock of the system's on a file in it: however a
/// program ends, its lock is gone with it.
///
/// Law: only another program that holds the lock keeps one out. A folder that takes no lock (write-protected,
/// or on a server that knows none) is open to everybody. Threads: any.
class FolderLock {
 public:
  /// The lock, or who has it.
  using Claim = std::variant<std::unique_ptr<FolderLock>, FolderHolder>;
  [[nodiscard]] static Claim Take(const std::filesystem::path& file);
  virtual ~FolderLock() = default;
};

}  // namespace platform::files
