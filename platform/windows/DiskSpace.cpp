// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The words of the other system's header with this system's calls behind them.
#include "platform/files/DiskSpace.h"

#include <windows.h>

#include <filesystem>
#include <string_view>

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

std::optional<std::int64_t> DiskSpace::LargestFile(const std::string& path) {
  constexpr std::int64_t kMostOfFat = (std::int64_t{1} << 32) - 1;
  wchar_t volume[MAX_PATH + 1] = {};
  wchar_t system[MAX_PATH + 1] = {};
  if (!GetVolumePathNameW(std::filesystem::path(path).c_str(), volume, MAX_PATH)) return {};
  if (!GetVolumeInformationW(volume, nullptr, 0, nullptr, nullptr, nullptr, system, MAX_PATH)) return {};
  const std::wstring_view name(system);
  if (name != L"FAT" && name != L"FAT32") return {};
  return kMostOfFat;
}

}  // namespace platform::files
