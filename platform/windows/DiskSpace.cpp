// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The words of the other system's header with this system's calls behind them.
#include "platform/files/DiskSpace.h"

#include <windows.h>

#include <filesystem>

namespace platform::files {

std::optional<std::int64_t> DiskSpace::Of(const std::string& path) {
  std::filesystem::path folder(path);
  ULARGE_INTEGER free{};
  // It asks for a folder, and that of a file that is made later may not be there either.
  while (!GetDiskFreeSpaceExW(folder.empty() ? nullptr : folder.c_str(), &free, nullptr, nullptr)) {
    if (folder.empty() || folder == folder.parent_path()) return {};
    folder = folder.parent_path();
  }
  return static_cast<std::int64_t>(free.QuadPart);
}

}  // namespace platform::files
