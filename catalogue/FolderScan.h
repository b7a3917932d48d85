// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace catalogue {

/// What a scan looks for; each mask is a pass of its own over the whole tree.
enum class ScanMode { Music, Karaoke };
[[nodiscard]] std::span<const std::string_view> MasksOf(ScanMode mode);

/// What one pass found.
struct FolderListing {
  std::vector<std::string> files;
  std::int64_t bytes = 0;
};

/// The files of a tree that match a mask ("*.mp3"), deeper folders before the folder they are in, each
/// folder's in byte order of their names. Letter case of the extension does not count.
///
/// Folders that cannot be read are passed over; a tree that leads back into itself is entered once. Stops
/// early when wanted() is false. Threads: a worker; blocks on the disk.
[[nodiscard]] FolderListing ListFolder(const std::filesystem::path& folder, std::string_view mask,
                                       const std::function<bool()>& wanted);

}  // namespace catalogue
