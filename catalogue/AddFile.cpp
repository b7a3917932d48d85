// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/AddFile.h"

#include <algorithm>

#include "catalogue/Companion.h"
#include "catalogue/MixingTags.h"
#include "catalogue/track_table.h"
#include "support/Text.h"

namespace catalogue {
namespace {

std::string_view LastPart(std::string_view path) {
  const std::size_t separator = path.find_last_of("/\\");
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

std::size_t PlaceOf(int column) {
  return static_cast<std::size_t>(column - 1);
}

std::string NumberOrNothing(int number) {
  return number > 0 ? std::to_string(number) : std::string();
}

TrackCells Named(const TrackCells& material, const std::string& path, const NameRule& rule) {
  CellViews views = ViewsOf(material);
  NameRow(views, path, rule);
  TrackCells row;
  std::copy(views.begin(), views.end(), row.begin());
  return row;
}

/// "128" and "127.96" become "128.00" and "127.96"; what is no tempo becomes nothing.
std::string TempoCell(std::string_view text) {
  const double bpm = support::ParseReal(support::Trim(text)).value_or(0);
  return bpm > 0 && bpm < 10000 ? support::FormatReal(bpm, 2) : std::string();
}

}  // namespace

FileKind KindOf(std::string_view path) {
  const std::string extension = support::UpperTail(path, 3);
  if (extension == "KAR" || extension == "MID") return FileKind::MidiSong;
  return extension == "CDG" ? FileKind::DiscImage : FileKind::Audio;
}

std::string AudioPathOf(const std::string& path) {
  if (KindOf(path) != FileKind::DiscImage) return path;
  const std::string found = CompanionOf(path, "mp3");
  return found.empty() ? path.substr(0, path.size() - 3) + "mp3" : found;
}

TrackCells MaterialOf(const FileTags& tags, const MixingTags& mixing) {
  TrackCells cells;
  const auto cell = [&cells](int column) -> std::string& { return cells[PlaceOf(column)]; };
  cell(track::kArtist) = tags.artist;
  cell(track::kTitle) = tags.title;
  cell(track::kTime) =
      support::FormatMinutes(std::chrono::duration_cast<std::chrono::seconds>(tags.duration).count());
  cell(track::kGenre) = tags.genre;
  cell(track::kAlbum) = tags.album;
  cell(track::kYear) = tags.year;
  cell(track::kBitrate) = NumberOrNothing(tags.bit_rate);
  cell(track::kFreq) = NumberOrNothing(tags.sample_rate);
  cell(track::kBpm) = mixing.bpm.value_or(TempoCell(tags.bpm));
  cell(track::kGain) = mixing.gain.value_or("");
  cell(track::kStartMixPoint) = mixing.start_mix_point.value_or("");
  cell(track::kEndMixPoint) = mixing.end_mix_point.value_or("");
  return cells;
}

TrackCells MaterialOf(const SongFacts& song) {
  FileTags tags;
  tags.artist = song.artist;
  tags.title = song.title;
  tags.genre = song.genre;
  tags.duration = song.length;
  return MaterialOf(tags, MixingTags{});
}

CellViews ViewsOf(const TrackCells& cells) {
  CellViews views;
  std::copy(cells.begin(), cells.end(), views.begin());
  return views;
}

void NameRow(CellViews& material, std::string_view path, const NameRule& rule) {
  std::string_view& artist = material[PlaceOf(track::kArtist)];
  std::string_view& title = material[PlaceOf(track::kTitle)];
  material[PlaceOf(track::kFilename)] = path;
  if (!artist.empty() && !title.empty()) return;
  const NamesOfFile names = SplitName(path, rule);
  if (artist.empty()) artist = names.artist;
  if (title.empty()) title = names.title;
}

TrackCells TrackRow(const std::string& path, const FileTags& tags, const MixingTags& mixing,
                    const NameRule& rule) {
  return Named(MaterialOf(tags, mixing), path, rule);
}

TrackCells TrackRow(const std::string& path, const FileTags& tags, const NameRule& rule) {
  return TrackRow(path, tags, MixingTagsOf(tags), rule);
}

KaraokeViews KaraokeRow(const CellViews& track_row) {
  const auto cell = [&track_row](int column) { return track_row[PlaceOf(column)]; };
  return {cell(track::kArtist), cell(track::kTitle), {},
          cell(track::kGenre),  cell(track::kTime),  cell(track::kFilename)};
}

support::Result<TrackCells> AnalyseFile(TagReader& reader, const std::string& path,
                                        const support::Sentences& say, TagScratch* scratch,
                                        const NameRule& rule) {
  if (KindOf(path) == FileKind::MidiSong) {
    return support::Error{support::ErrorCode::Unsupported,
                          say(support::Sentence::KaraokeSongInMusic, {LastPart(path)})};
  }
  const std::string audio = AudioPathOf(path);
  const support::Result<FileTags> tags = reader.Read(audio);
  if (!tags) return tags.Failure();
  if (scratch == nullptr) return TrackRow(audio, tags.Value(), rule);
  return TrackRow(audio, tags.Value(), MixingTagsOf(tags.Value(), *scratch), rule);
}

support::Result<TrackCells> AnalyseSong(SongReader& songs, TagReader& reader, const std::string& path,
                                        TagScratch* scratch, const NameRule& rule) {
  if (KindOf(path) != FileKind::MidiSong) return AnalyseFile(reader, path, {}, scratch, rule);
  const auto song = songs.Read(path);
  if (!song) return song.Failure();
  return Named(MaterialOf(song.Value()), path, rule);
}

}  // namespace catalogue
