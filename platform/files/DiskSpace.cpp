// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/DiskSpace.h"

#include <sys/statvfs.h>

#include <filesystem>

namespace platform::files {

std::optional<std::int64_t> DiskSpace::Of(const std::string& path) {
  std::filesystem::path folder(path);
  struct statvfs disk {};
  // The folder of a file that is made later may not be there either.
  while (statvfs(folder.empty() ? "." : folder.c_str(), &disk) != 0) {
    if (folder.empty() || folder == folder.parent_path()) return {};
    folder = folder.parent_path();
  }
  return static_cast<std::int64_t>(disk.f_bavail * disk.f_frsize);
}

}  // namespace platform::files
