// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>

namespace bench {

/// How long the Music Player Daemon takes to make its database of a folder, in seconds; nothing where it is
/// not installed. It plays nowhere and is gone afterwards.
[[nodiscard]] std::optional<double> SecondsOfMpdUpdate(const std::filesystem::path& music,
                                                       const std::filesystem::path& scratch);

}  // namespace bench
