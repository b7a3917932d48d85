// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

namespace platform::codec {

/// Makes a WAV or FLAC file of ours tell the length that it has, and takes off what is not whole at its end.
/// Any other file stays as it is. Blocks on the disk.
void RepairHead(const std::filesystem::path& path);

}  // namespace platform::codec
