// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/Lyric.h"

#include <algorithm>
#include <span>

#include "karaoke/LyricEvents.h"
#include "karaoke/LyricReserved.h"
#include "karaoke/LyricText.h"
#include "support/Text.h"

namespace karaoke {
namespace {

std::string_view WithoutBlanksBefore(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

/// Puts syllables into lines.
class LineMaker {
 public:
  explicit LineMaker(std::vector<Syllable>& syllables) : syllables_(syllables) {}

  void Break() { begin_new_ = true; }

  /// Blanks of their own belong to the syllable before; at the beginning of a line they part nothing.
  void Add(Microseconds at, std::string_view text) {
    const bool blank = IsBlank(text);
    if (blank && !begin_new_) syllables_.back().text += text;
    if (blank) return;
    if (begin_new_) ++line_;
    syllables_.push_back({at, line_, std::string(begin_new_ ? WithoutBlanksBefore(text) : text)});
    begin_new_ = false;
  }

 private:
  std::vector<Syllable>& syllables_;
  int line_ = -1;
  bool begin_new_ = true;
};

/// A slash that stands for the beat of a chord, as some arrangers write them between the words.
bool IsStroke(std::string_view text) {
  return support::Trim(text) == "/";
}

class WordsReader {
 public:
  WordsReader(const LyricEvents& words, const TempoMap& times, Lyric& lyric)
      : words_(words), times_(times), lyric_(lyric), lines_(lyric.syllables) {
    reserved_used_ = ReservedLetters::AreUsedIn(words);
    const auto strokes = std::count_if(words.events.begin(), words.events.end(),
                                       [](const LyricEvent& event) { return IsStroke(event.text); });
    has_strokes_ = 2 * strokes > std::ssize(words.events);
  }

  void Run() {
    for (const LyricEvent& event : words_.events) {
      const Microseconds at = times_.TimeOf(event.tick);
      const std::string sung = reserved_used_ ? reserved_.Sung(event.text) : std::string(event.text);
      const bool mark = BeginsLine(sung) && !(has_strokes_ && IsStroke(sung));
      if (mark) lines_.Break();
      AddLines(at, std::string_view(sung).substr(mark ? 1 : 0));
    }
    lyric_.coding = reserved_.Coding();
    if (lyric_.title.empty()) lyric_.title = reserved_.Title();
    if (lyric_.artist.empty()) lyric_.artist = reserved_.Artist();
  }

 private:
  /// CR ends a line and LF a paragraph, or both of them a line, before, behind or without a syllable.
  void AddLines(Microseconds at, std::string_view text) {
    for (std::size_t end = text.find_first_of("\r\n"); end != std::string_view::npos;
         end = text.find_first_of("\r\n")) {
      lines_.Add(at, text.substr(0, end));
      lines_.Break();
      text.remove_prefix(end + 1);
    }
    lines_.Add(at, text);
  }

  const LyricEvents& words_;
  const TempoMap& times_;
  Lyric& lyric_;
  LineMaker lines_;
  ReservedLetters reserved_;
  bool reserved_used_ = false;
  bool has_strokes_ = false;
};

/// Letters as far as that can be told without their code page: the further bytes of UTF-8 do not count.
std::size_t Letters(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

bool PartsWords(const Syllable& before, const Syllable& after) {
  return before.text.back() == ' ' || after.text.front() == ' ';
}

/// One line that nobody broke is broken: between words, where it is long enough or sung with a pause.
/// Returns how many lines it became beyond the first.
int BreakLine(std::span<Syllable> line) {
  constexpr std::size_t kLongest = 64, kLongEnough = 32, kLongAfterPause = 8;
  constexpr Microseconds kPause{1'500'000};
  std::size_t letters = 0;
  for (const Syllable& syllable : line) letters += Letters(syllable.text);
  if (letters <= kLongest) return 0;
  const bool has_words = std::adjacent_find(line.begin(), line.end(), PartsWords) != line.end();
  int added = 0;
  letters = 0;
  for (std::size_t i = 1; i < line.size(); ++i) {
    letters += Letters(line[i - 1].text);
    const bool pause = line[i].at - line[i - 1].at >= kPause;
    const bool long_enough = letters >= kLongEnough || (pause && letters >= kLongAfterPause);
    if (long_enough && (!has_words || PartsWords(line[i - 1], line[i]))) {
      ++added;
      letters = 0;
      line[i].text = std::string(WithoutBlanksBefore(line[i].text));
    }
    line[i].line += added;
  }
  return added;
}

void BreakLongLines(std::vector<Syllable>& syllables) {
  int added = 0;
  for (auto first = syllables.begin(); first != syllables.end();) {
    const auto last = std::find_if(first, syllables.end(), [line = first->line](const Syllable& syllable) {
      return syllable.line != line;
    });
    const int more = BreakLine({first, last});
    for (; first != last; ++first) first->line += added;
    added += more;
  }
}

}  // namespace

Lyric ReadLyric(std::string_view bytes) {
  Lyric lyric;
  const auto file = ReadMidiFile(bytes);
  auto times = file ? ReadSongTimes(*file) : std::nullopt;
  if (!times) return lyric;
  const LyricEvents words = FindLyricEvents(*file, *times);
  const auto title = [&](std::size_t number) {
    return number < words.titles.size() ? std::string(support::Trim(words.titles[number])) : std::string();
  };
  lyric.title = title(0);
  lyric.artist = title(1);
  lyric.language = words.language;
  WordsReader(words, times->tempo, lyric).Run();
  BreakLongLines(lyric.syllables);
  lyric.tempo_map = std::move(times->tempo);
  return lyric;
}

}  // namespace karaoke
