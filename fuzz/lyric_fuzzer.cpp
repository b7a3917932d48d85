// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "karaoke/LyricCoding.h"
#include "karaoke/LyricShow.h"
#include "karaoke/MidiFile.h"
#include "platform/codepages/UchardetCodePages.h"

namespace {

/// Tracks lie in the file, one behind the other.
void CheckTracks(std::string_view bytes) {
  const auto file = karaoke::ReadMidiFile(bytes);
  if (!file) return;
  const char* end = bytes.data();
  for (const std::string_view track : file->tracks) {
    if (track.data() < end || track.data() + track.size() > bytes.data() + bytes.size()) abort();
    end = track.data() + track.size();
  }
}

void CheckShow(const karaoke::LyricShow& show) {
  for (const karaoke::ShownLine& line : show.Lines()) {
    if (line.syllables.empty()) abort();
    for (const karaoke::ShownSyllable& syllable : line.syllables) {
      if (syllable.begin > syllable.end || syllable.end > line.text.size()) abort();
      const karaoke::LyricFrame frame = show.At(syllable.at);
      if (frame.word_begin > frame.word_end) abort();
    }
  }
}

}  // namespace

/// Any bytes are read as a song's words, in order of time and line, and their code page is told.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  CheckTracks(bytes);
  const karaoke::Lyric lyric = karaoke::ReadLyric(bytes);
  const karaoke::Syllable* before = nullptr;
  for (const karaoke::Syllable& syllable : lyric.syllables) {
    if (syllable.text.empty() || syllable.at < karaoke::Microseconds(0)) abort();
    if (syllable.text.find_first_of("\r\n") != std::string::npos) abort();
    const int next = before == nullptr ? 0 : before->line;
    if (syllable.line < next || syllable.line > next + 1) abort();
    if (before != nullptr && syllable.at < before->at) abort();
    before = &syllable;
  }
  CheckShow(karaoke::LyricShow(lyric));
  static platform::codepages::UchardetCodePages pages;
  const std::string_view names[] = {lyric.title, lyric.artist};
  static_cast<void>(karaoke::CodingOf(lyric, names, &pages));
  return 0;
}
