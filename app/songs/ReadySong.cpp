// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/songs/ReadySong.h"

#include <array>
#include <utility>

#include "karaoke/Lyric.h"
#include "karaoke/LyricCoding.h"
#include "karaoke/SongBeats.h"

namespace app {
namespace {

SongWords WordsOf(const karaoke::Lyric& lyric, const karaoke::Song& song, const SongRow& row,
                  const SongTools& tools) {
  SongWords words{row.title.empty() ? lyric.title : row.title, row.artist.empty() ? lyric.artist : row.artist,
                  karaoke::LyricShow(lyric)};
  const std::array<std::string_view, 2> names{words.title, words.artist};
  words.guessed_coding = karaoke::CodingOf(lyric, names, tools.code_pages);
  if (words.show.Lines().empty()) words.note = song.note.value_or(support::Sentence::NoWords);
  return words;
}

}  // namespace

support::Result<ReadySong> MakeReady(const SongRow& row, const std::string& soundfont,
                                     const SongTools& tools) {
  const auto bytes = karaoke::ReadSongBytes(row.filename);
  if (!bytes) return bytes.Failure();
  ReadySong ready;
  ready.song = karaoke::ReadSong(bytes.Value());
  const karaoke::Lyric lyric = karaoke::ReadLyric(bytes.Value());
  auto sound =
      karaoke::SongSound::Open(bytes.Value(), lyric.syllables, *tools.synthesisers, soundfont, kSongRate);
  if (!sound) return sound.Failure();
  ready.sound = std::move(sound).Value();
  ready.words =
      WithCoding(WordsOf(lyric, ready.song, row, tools), KeptCoding(tools.side_store, row.filename));
  ready.beats = std::make_shared<const music::BeatGrid>(karaoke::BeatsOf(ready.song));
  return ready;
}

std::shared_ptr<const SongWords> WithCoding(const SongWords& words, const std::string& coding) {
  SongWords changed = words;
  changed.chosen_coding = !coding.empty();
  changed.coding = coding.empty() ? words.guessed_coding : coding == kWesternCoding ? "" : coding;
  return std::make_shared<const SongWords>(std::move(changed));
}

std::string KeptCoding(catalogue::SideStore* store, const std::string& filename) {
  const auto stamp = store != nullptr ? store->StampOf(filename) : std::nullopt;
  return stamp ? store->Read(filename, *stamp, catalogue::SidePart::LyricCoding).value_or("") : "";
}

support::Result<void> KeepCoding(catalogue::SideStore& store, const std::string& filename,
                                 const std::string& coding) {
  const auto stamp = store.StampOf(filename);
  if (!stamp) return {};
  return store.Write(filename, *stamp, catalogue::SidePart::LyricCoding, coding);
}

}  // namespace app
