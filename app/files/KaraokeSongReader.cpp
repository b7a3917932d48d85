// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/KaraokeSongReader.h"

#include "karaoke/SongReader.h"
#include "support/Sentences.h"

namespace app {

support::Result<catalogue::SongFacts> KaraokeSongReader::Read(const std::string& path) {
  const auto bytes = karaoke::ReadSongBytes(path);
  if (!bytes) return bytes.Failure();
  const karaoke::Song song = karaoke::ReadSong(bytes.Value());
  // A song that breaks off is still a song; what has neither length nor name is none.
  const bool is_none = song.length.count() <= 0 && !song.titles && !song.quarter_note;
  if (is_none) return support::Failed(support::ErrorCode::Malformed, support::Sentence::NoSongInFile, {path});
  return catalogue::SongFacts{karaoke::ArtistOf(song), karaoke::TitleOf(song), song.genre.value_or(""),
                              std::chrono::duration_cast<std::chrono::milliseconds>(song.length)};
}

}  // namespace app
