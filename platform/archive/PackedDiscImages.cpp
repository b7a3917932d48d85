// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/archive/PackedDiscImages.h"

#include <utility>

#include "platform/archive/SongArchive.h"
#include "support/Sentences.h"

namespace platform::archive {

support::Result<std::vector<std::uint8_t>> PackedDiscImages::Of(const std::string& song) {
  auto opened = files::OpenPlainFile(song);
  if (!opened || !IsArchive(opened.Value())) return loose_.Of(song);
  auto archive = SongArchive::Open(std::move(opened).Value(), song);
  if (archive) return archive.Value().UnpackPicture();
  support::Error failure = archive.Failure();
  if (failure.saying.sentence == support::Sentence::ArchiveWithoutPicture) {
    failure.code = support::ErrorCode::NotFound;
  }
  return failure;
}

}  // namespace platform::archive
