// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "catalogue/track_table.h"

namespace bench {

/// A track as a program without a table of its own would hold it.
using TrackStruct = std::array<std::string, 13>;

/// The reference: the same rows in a database file, written whole in one transaction with prepared statements
/// and flushed to the disk as SQLite does by default.
void SaveWithSqlite(const std::filesystem::path& path, const catalogue::track_table& table);
[[nodiscard]] std::vector<TrackStruct> LoadWithSqlite(const std::filesystem::path& path);

}  // namespace bench
