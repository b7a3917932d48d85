// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/files/PlainFile.h"
#include "support/Result.h"

namespace platform::archive {

/// A file with sound in it, open for reading from its start.
struct SoundFile {
  files::PlainFile file;
  std::string name;     ///< the path, or what the sound is called in its archive
  bool packed = false;  ///< it lies in an archive, and the open file in memory
};

/// Opens a sound file by its path. Where that is a karaoke archive, by what it holds and not by its name, its
/// sound is opened, so that whoever plays or reads sound knows nothing of archives.
/// Threads: any; blocks on the disk.
[[nodiscard]] support::Result<SoundFile> OpenSoundFile(const std::string& path);

}  // namespace platform::archive
