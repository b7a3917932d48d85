// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/DiskSpace.h"

#include <sys/statfs.h>

#include <filesystem>

namespace platform::files {
namespace {

std::optional<struct statfs> DiskOf(const std::string& path) {
  std::filesystem::path folder(path);
  struct statfs disk {};
  // The folder of a file that is made later may not be there either.
  while (statfs(folder.empty() ? "." : folder.c_str(), &disk) != 0) {
    if (folder.empty() || folder == folder.parent_path()) return {};
    folder = folder.parent_path();
  }
  return disk;
}

}  // namespace

std::optional<std::int64_t> DiskSpace::Of(const std::string& path) {
  const auto disk = DiskOf(path);
  if (!disk) return {};
  const auto block = disk->f_frsize != 0 ? disk->f_frsize : disk->f_bsize;
  return static_cast<std::int64_t>(disk->f_bavail) * static_cast<std::int64_t>(block);
}

std::optional<std::int64_t> DiskSpace::LargestFile(const std::string& path) {
  constexpr std::int64_t kFat = 0x4d44;  // MSDOS_SUPER_MAGIC
  constexpr std::int64_t kMostOfFat = (std::int64_t{1} << 32) - 1;
  const auto disk = DiskOf(path);
  if (!disk || static_cast<std::int64_t>(disk->f_type) != kFat) return {};
  return kMostOfFat;
}

}  // namespace platform::files
