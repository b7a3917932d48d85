// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/archive/SoundFile.h"

#include <utility>

#include "platform/archive/SongArchive.h"

namespace platform::archive {

support::Result<SoundFile> OpenSoundFile(const std::string& path) {
  auto opened = files::OpenPlainFile(path);
  if (!opened) return opened.Failure();
  files::PlainFile file = std::move(opened).Value();
  if (!IsArchive(file)) return SoundFile{std::move(file), path};
  auto archive = SongArchive::Open(std::move(file), path);
  if (!archive) return archive.Failure();
  auto sound = archive.Value().UnpackSound();
  if (!sound) return sound.Failure();
  return SoundFile{std::move(sound).Value(), archive.Value().Song().sound.name, true};
}

}  // namespace platform::archive
