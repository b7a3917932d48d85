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

/// Makes karaoke songs of a minute, each a tagged mp3 and its picture, in one folder loose and in the other
/// as an archive a song. Their bytes are shared on the disk.
void MakeSongs(const std::filesystem::path& loose, const std::filesystem::path& packed, int songs);

}  // namespace bench
