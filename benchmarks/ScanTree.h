// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// Makes a collection of tagged mp3, ogg, flac and wma files, twelve an album, and gives their paths. Half of
/// them carry values for mixing, as a DJ's collection does after an evening with this program.
[[nodiscard]] std::vector<std::string> MakeCollection(const std::filesystem::path& folder, int files);

}  // namespace bench
