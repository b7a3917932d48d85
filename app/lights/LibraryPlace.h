// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>

#include "support/Result.h"

namespace app {

/// Where a text goes in a folder: at the file's name, or with " 2", " 3" ... behind it, the first that is
/// free or holds the very text. Fails where the folder cannot be read, and after many that are taken. Blocks
/// on the disk.
[[nodiscard]] support::Result<std::filesystem::path> PlaceInLibrary(const std::filesystem::path& file,
                                                                    const std::filesystem::path& folder,
                                                                    const std::string& text);

}  // namespace app
