// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "support/Result.h"

namespace dmx {

/// The bytes of a regular file. ErrorCode::NotFound, or Unreadable when it is no file or too long.
[[nodiscard]] support::Result<std::string> WholeDataFile(const std::filesystem::path& path,
                                                         std::uintmax_t longest);

/// Appends a text as one line; line ends inside become blanks, as they would shift every line behind them.
void AppendLine(std::string& text, std::string_view line);
void AppendLine(std::string& text, int number);

}  // namespace dmx
