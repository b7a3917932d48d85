// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/ports/TagReader.h"

namespace platform::tags {

/// Writes the text fields, the tempo and the user items into the tag of an mp3, ogg, flac, wma, m4a or wav
/// file, in place of what stood there under the same names; the measured fields (length, rates) are left
/// out. Threads: any, one a file; blocks on the disk.
[[nodiscard]] support::Result<void> WriteTags(const std::string& path, const catalogue::FileTags& tags);

}  // namespace platform::tags
