// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "catalogue/ports/TagReader.h"

namespace catalogue {

/// Puts values for mixing into the tags of audio files.
///
/// Law: all else in a file stays as it was, and a file is replaced whole or not at all. Threads: any, one a
/// file; blocks on the disk.
class TagWriter {
 public:
  virtual ~TagWriter() = default;
  /// The comment field becomes this block. Of the items only those that the tag has already get their new
  /// value. Fails where the file is missing, write-protected or of no kind that carries a tag.
  virtual support::Result<void> Write(const std::string& path, const std::string& text_block,
                                      const std::vector<TagItem>& items) = 0;
};

}  // namespace catalogue
