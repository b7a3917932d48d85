// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include "catalogue/ports/TagReader.h"

namespace platform::tags {

/// Reads the tags of mp3, ogg, flac, wma, m4a and wav files, recognised by content; of others what a plain
/// tag tells. Threads: any; blocks on the disk.
class TagLibTagReader : public catalogue::TagReader {
 public:
  support::Result<catalogue::FileTags> Read(const std::string& path) override;
};

/// The same over a file's bytes in memory; the name is for the error's sentence.
[[nodiscard]] support::Result<catalogue::FileTags> ReadTags(std::string_view bytes, const std::string& name);

}  // namespace platform::tags
