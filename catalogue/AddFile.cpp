// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/AddFile.h"

#include "catalogue/MixingTags.h"
#include "catalogue/track_table.h"
#include "support/Text.h"

namespace catalogue {
namespace {

std::string_view LastPart(std::string_view path) {
  const std::size_t separator = path.find_last_of("/\\");
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

std::string_view WithoutExtension(std::string_view name) {
  const std::size_t point = name.rfind('.');
  return point == std::string_view::npos || point == 0 ? name : name.substr(0, point);
}

std::string NumberOrNothing(int number) {
  return number > 0 ? std::to_string(number) : std::string();
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
  return path.substr(0, path.size() - 3) + "mp3";
}

TrackCells TrackRow(const std::string& path, const FileTags& tags) {
  return TrackRow(path, tags, MixingTagsOf(tags));
}

TrackCells TrackRow(const std::string& path, const FileTags& tags, const MixingTags& mixing) {
  TrackCells cells;
  const auto cell = [&cells](int column) -> std::string& {
    return cells[static_cast<std::size_t>(column - 1)];
  };
  cell(track::kArtist) = tags.artist;
  cell(track::kTitle) = tags.title.empty() ? std::string(WithoutExtension(LastPart(path))) : tags.title;
  cell(track::kTime) =
      support::FormatMinutes(std::chrono::duration_cast<std::chrono::seconds>(tags.duration).count());
  cell(track::kFilename) = path;
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

KaraokeCells KaraokeRow(const std::string& path, const FileTags& tags) {
  const TrackCells cells = TrackRow(path, tags);
  const auto cell = [&cells](int column) { return cells[static_cast<std::size_t>(column - 1)]; };
  return {cell(track::kArtist), cell(track::kTitle), "", cell(track::kGenre), cell(track::kTime), path};
}

support::Result<TrackCells> AnalyseFile(TagReader& reader, const std::string& path,
                                        const support::Sentences& say, TagScratch* scratch) {
  if (KindOf(path) == FileKind::MidiSong) {
    return support::Error{support::ErrorCode::Unsupported,
                          say(support::Sentence::KaraokeSongInMusic, {LastPart(path)})};
  }
  const std::string audio = AudioPathOf(path);
  const support::Result<FileTags> tags = reader.Read(audio);
  if (!tags) return tags.Failure();
  if (scratch == nullptr) return TrackRow(audio, tags.Value());
  return TrackRow(audio, tags.Value(), MixingTagsOf(tags.Value(), *scratch));
}

}  // namespace catalogue
