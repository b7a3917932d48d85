// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/SongReader.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "karaoke/LyricText.h"
#include "support/Sentences.h"
#include "support/Text.h"

namespace karaoke {
namespace {

constexpr std::string_view kNamedWords{"\xFF\x03\x05W", 4};

int DenominatorOf(int code) {
  return code >= 1 && code <= 10 ? 1 << code : code;
}

/// Two decimals, halves away from zero.
float BpmOf(std::uint32_t tempo) {
  constexpr double kHundredthsOfMinute = 6e9;
  return static_cast<float>(std::round(kHundredthsOfMinute / tempo) / 100);
}

/// Whether the reading goes on.
bool ReadSignature(std::string_view bytes, Song& song) {
  const std::size_t at = bytes.find("\xFF\x58");
  if (at == std::string_view::npos) return false;
  const auto numerator = BigEndianAt(bytes, at + 3, 1);
  const auto code = BigEndianAt(bytes, at + 4, 1);
  if (!numerator || !code) return false;
  song.time_signature =
      std::to_string(*numerator) + "/" + std::to_string(DenominatorOf(static_cast<int>(*code)));
  return true;
}

bool ReadTempo(std::string_view bytes, Song& song) {
  constexpr std::size_t kDivisionAt = 12;
  const std::size_t at = bytes.find("\xFF\x51");
  if (at == std::string_view::npos) return false;
  song.tempo = BigEndianAt(bytes, at + 3, 3);
  if (!song.tempo) return false;
  if (*song.tempo > 0) song.bpm = BpmOf(*song.tempo);
  if (const auto division = BigEndianAt(bytes, kDivisionAt, 2)) {
    song.quarter_note = static_cast<int>(*division);
  }
  return song.quarter_note.has_value();
}

std::optional<std::size_t> FindLyricSign(std::string_view bytes) {
  std::size_t at = bytes.find(kNamedWords);
  if (at == std::string_view::npos) at = bytes.find("@T");
  return at == std::string_view::npos ? std::nullopt : std::optional(at);
}

/// The last chunk header at or before a place.
std::optional<std::size_t> FindTrackBefore(std::string_view bytes, std::size_t at) {
  for (std::size_t back = at + 1; back-- > 0;) {
    if ((bytes[back] == 'M' || bytes[back] == 'm') && support::ToUpper(bytes.substr(back, 4)) == "MTRK") {
      return back;
    }
  }
  return std::nullopt;
}

/// A lyrics track and the bytes behind it that are read with it.
struct LyricsTrack {
  std::string_view bytes;
  std::size_t length = 0;  ///< as the chunk's header says
};

LyricsTrack TrackAt(std::string_view bytes, std::size_t header) {
  constexpr std::size_t kSpare = 100;
  LyricsTrack track;
  track.length = BigEndianAt(bytes, header + 4, 4).value_or(0);
  track.bytes = bytes.substr(std::min(header + kChunkHeader, bytes.size()), track.length + kSpare);
  return track;
}

void AppendLine(std::optional<std::string>& text, std::string_view line) {
  if (text) *text += "\r\n";
  if (!text) text.emplace();
  *text += line;
}

/// Gives each text event of the track its place: tags to the song, syllables to the table.
class EventScan {
 public:
  EventScan(Song& song, const LyricText& lyrics) : song_(song), lyrics_(lyrics) {}

  /// times: null when ticks have no length; then only tags are read.
  void Run(const LyricsTrack& track, const TempoMap* times, std::int64_t start) {
    TrackReader reader(track.bytes);
    while (const auto event = reader.Next()) {
      // Behind a track without an end event the next chunk's header is no event.
      if (event->at >= track.length && track.bytes.substr(track.length, 4) == "MTrk") break;
      if (event->IsMeta(0x01)) Take(*event, times, start);
    }
  }

 private:
  void Take(const TrackEvent& event, const TempoMap* times, std::int64_t start) {
    const std::string_view text = event.text;
    if (BeginsLine(text)) ++line_;
    if (text.substr(0, 2) == "@T") AppendLine(song_.titles, text.substr(2));
    if (text.substr(0, 2) == "@G") song_.genre = text.substr(2);
    if (text.empty() || text.front() == '@' || times == nullptr) return;
    const std::string_view words = text.substr(BeginsLine(text) ? 1 : 0);
    if (IsBlank(words) || song_.syllables.size() == kMostPieces) return;
    song_.syllables.push_back({times->TimeOf(start + event.tick), LineOf(event.at), std::string(words)});
  }

  /// The line in which the text has the same event.
  int LineOf(std::size_t at) {
    const auto piece = std::lower_bound(lyrics_.pieces.begin(), lyrics_.pieces.end(), at,
                                        [](const LyricText::Piece& p, std::size_t a) { return p.at < a; });
    const int last = static_cast<int>(lyrics_.lines.size()) - 1;
    return piece != lyrics_.pieces.end() && piece->at == at ? piece->line : std::min(line_, last);
  }

  Song& song_;
  const LyricText& lyrics_;
  int line_ = 0;
};

/// Where a track of the file begins on the song's line of ticks.
std::int64_t StartOf(const MidiFile& file, const SongTimes& times, const char* content) {
  for (std::size_t i = 0; i < file.tracks.size(); ++i) {
    if (file.tracks[i].data() == content) return times.track_starts[i];
  }
  return 0;
}

std::string TitleLine(const Song& song, std::size_t number) {
  const std::string titles = song.titles.value_or("");
  const auto lines = support::SplitLines(titles);
  return number < lines.size() ? std::string(support::Trim(lines[number])) : "";
}

}  // namespace

std::string TitleOf(const Song& song) {
  return TitleLine(song, 0);
}

std::string ArtistOf(const Song& song) {
  return TitleLine(song, 1);
}

Song ReadSong(std::string_view bytes) {
  Song song;
  const auto file = ReadMidiFile(bytes);
  const auto times = file ? ReadSongTimes(*file) : std::nullopt;
  if (times) {
    song.length = times->tempo.TimeOf(times->end);
    song.tempo_map = times->tempo;
    song.metres = times->metres;
  }
  if (!file) song.note = support::Sentence::NotMidi;
  if (file && !times) song.note = support::Sentence::MidiWithoutTicks;
  if (!ReadSignature(bytes, song) || !ReadTempo(bytes, song)) return song;
  const auto sign = FindLyricSign(bytes);
  song.is_lyric = sign.has_value();
  if (!sign) return song;
  const auto header = FindTrackBefore(bytes, *sign);
  if (!header) {
    song.note = support::Sentence::WordsInNoTrack;
    return song;
  }
  const LyricsTrack track = TrackAt(bytes, *header);
  LyricText lyrics = AssembleLyrics(track.bytes);
  const std::int64_t start = times ? StartOf(*file, *times, track.bytes.data()) : 0;
  EventScan(song, lyrics).Run(track, times ? &times->tempo : nullptr, start);
  song.text_lyric = std::move(lyrics.text);
  song.lines = std::move(lyrics.lines);
  return song;
}

support::Result<std::string> ReadSongBytes(const std::string& path) {
  constexpr std::uintmax_t kLongest = 256 << 20;
  std::error_code failed;
  const auto fault = [&](support::ErrorCode code, support::Sentence what) {
    return support::Failed(code, what, {path});
  };
  if (!std::filesystem::is_regular_file(path, failed)) {
    return fault(support::ErrorCode::NotFound, support::Sentence::SongMissing);
  }
  const std::uintmax_t size = std::filesystem::file_size(path, failed);
  if (failed) return fault(support::ErrorCode::Unreadable, support::Sentence::SongUnreadable);
  if (size == 0) return fault(support::ErrorCode::Empty, support::Sentence::SongEmpty);
  if (size > kLongest) return fault(support::ErrorCode::Unsupported, support::Sentence::SongTooLong);
  std::ifstream file(path, std::ios::binary);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(size));
  if (!file && file.gcount() == 0)
    return fault(support::ErrorCode::Unreadable, support::Sentence::SongUnreadable);
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

}  // namespace karaoke
