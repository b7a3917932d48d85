// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "platform/archive/SongArchive.h"
#include "platform/files/MemoryFile.h"

using platform::archive::SongArchive;

/// Any bytes are either refused by a sentence, or give a sound and a picture of the sizes that were told.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  platform::files::MemoryFile memory;
  if (!memory.Append({reinterpret_cast<const char*>(data), size})) return 0;
  auto file = memory.Take();
  if (!file || size == 0) return 0;
  static_cast<void>(platform::archive::IsArchive(*file));
  auto archive = SongArchive::Open(std::move(*file), "input.zip");
  if (!archive) return archive.Failure().text.empty() ? abort(), 1 : 0;
  const platform::archive::SongPair& song = archive.Value().Song();
  if (song.sound.bytes <= 0 || song.sound.bytes > platform::archive::kLargestSound) abort();
  if (song.picture.bytes <= 0 || song.picture.bytes > platform::archive::kLargestPicture) abort();
  for (const auto& one : archive.Value().Songs()) {
    for (const auto& member : {one.sound, one.picture}) {
      if (member.name.starts_with("../") || member.name.find("/../") != std::string::npos) abort();
    }
  }
  const auto sound = archive.Value().UnpackSound();
  if (sound && sound.Value().size != song.sound.bytes) abort();
  const auto picture = archive.Value().UnpackPicture();
  if (picture && static_cast<std::int64_t>(picture.Value().size()) != song.picture.bytes) abort();
  return 0;
}
