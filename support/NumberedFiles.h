// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string_view>

#include "support/Result.h"

namespace support {

/// Gives a file, or whatever stands in its place, the name "NAME.MARK-N" with the first number that is free,
/// and returns that; what is not there is left alone and gives an empty path. What cannot be read is not
/// written over: it is set aside.
Result<std::filesystem::path> SetAside(const std::filesystem::path& path, std::string_view mark);

/// Copies a file to "NAME.MARK-N"; N is one more than the highest there is. Of these copies the newest `most`
/// stay. Nothing for a file that is not there.
Result<void> KeepCopy(const std::filesystem::path& path, std::string_view mark, int most);

}  // namespace support
