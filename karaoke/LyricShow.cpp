// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/LyricShow.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "karaoke/LyricText.h"

namespace karaoke {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;

constexpr Microseconds kLongGap = milliseconds(4000);
constexpr Microseconds kLongestSweep = milliseconds(800);
constexpr Microseconds kStaysAfterEnd = milliseconds(1000);  ///< before a long gap
constexpr Microseconds kSoonestChange = milliseconds(500);   ///< after a line's end
constexpr Microseconds kLongestJump = milliseconds(1000);
constexpr int kCountedBeats = 4;

/// "la " ends before its blank.
std::size_t EndWithoutBlanks(std::string_view text) {
  std::size_t end = text.size();
  while (end > 0 && IsBlank(text.substr(end - 1, 1))) --end;
  return end;
}

ShownLine MakeLine(const std::vector<const Syllable*>& sung) {
  ShownLine line;
  for (const Syllable* syllable : sung) {
    const std::size_t at = line.text.size();
    line.text += syllable->text;
    const std::size_t end = at + EndWithoutBlanks(syllable->text);
    const std::size_t blanks = std::min(syllable->text.find_first_not_of(' '), syllable->text.size());
    line.syllables.push_back({syllable->at, syllable->at, std::min(at + blanks, end), end});
  }
  return line;
}

/// Whether a song's writer left the blanks between words away. Scripts that have none are left as they are.
bool LacksBlanks(const std::vector<ShownLine>& lines) {
  constexpr std::size_t kEnoughToTell = 8;
  std::size_t joints = 0, parted = 0, letters = 0, bytes = 0;
  for (const ShownLine& line : lines) {
    bytes += line.text.size();
    letters += static_cast<std::size_t>(std::count_if(
        line.text.begin(), line.text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }));
    for (std::size_t i = 1; i < line.syllables.size(); ++i, ++joints) {
      parted += line.syllables[i].begin > line.syllables[i - 1].end ? 1 : 0;
    }
  }
  return joints >= kEnoughToTell && parted * 10 < joints && letters * 2 > bytes;
}

/// A blank behind each syllable, but where a "-" at its end joins it to the next one.
void AddBlanks(ShownLine& line) {
  std::string text;
  for (ShownSyllable& syllable : line.syllables) {
    std::string part = line.text.substr(syllable.begin, syllable.end - syllable.begin);
    const bool joined = part.size() > 1 && part.back() == '-';
    if (joined) part.pop_back();
    syllable.begin = text.size();
    text += part;
    syllable.end = text.size();
    if (!joined) text += ' ';
  }
  line.text = std::move(text);
}

double Share(Microseconds part, Microseconds whole) {
  if (whole <= Microseconds(0)) return 1;
  return std::clamp(static_cast<double>(part.count()) / static_cast<double>(whole.count()), 0.0, 1.0);
}

double JumpHeight(double way) {
  return 4 * way * (1 - way);
}

/// The word around a syllable: up to the blanks on both sides.
void FindWord(const ShownLine& line, const ShownSyllable& syllable, LyricFrame& frame) {
  const std::size_t before = line.text.find_last_of(' ', syllable.begin);
  frame.word_begin = before == std::string::npos ? 0 : before + 1;
  const std::size_t behind = line.text.find(' ', std::max(syllable.end, frame.word_begin));
  frame.word_end = behind == std::string::npos ? line.text.size() : behind;
}

}  // namespace

LyricShow::LyricShow(const Lyric& lyric) {
  std::map<int, std::vector<const Syllable*>> by_line;
  for (const Syllable& syllable : lyric.syllables) by_line[syllable.line].push_back(&syllable);
  for (const auto& [number, sung] : by_line) lines_.push_back(MakeLine(sung));
  if (LacksBlanks(lines_)) std::for_each(lines_.begin(), lines_.end(), AddBlanks);
  constexpr Microseconds kShortestBeat = milliseconds(250);
  constexpr Microseconds kLongestBeat = milliseconds(1000);
  for (const ShownLine& line : lines_) {
    const Microseconds quarter =
        lyric.tempo_map ? lyric.tempo_map->QuarterAt(line.Begin()) : milliseconds(500);
    beats_.push_back(std::clamp(quarter, kShortestBeat, kLongestBeat));
  }
  PlaceLines();
}

void LyricShow::PlaceLines() {
  ShownSyllable* before = nullptr;
  for (ShownLine& line : lines_) {
    for (ShownSyllable& syllable : line.syllables) {
      if (before != nullptr)
        before->until = std::min(before->at + kLongestSweep, std::max(syllable.at, before->at));
      before = &syllable;
    }
  }
  if (before != nullptr) before->until = before->at + kLongestSweep;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    ShownLine& line = lines_[i];
    line.cleared = line.End() + kStaysAfterEnd;
    if (i == 0 || CountsIn(i)) {
      const Microseconds lead = std::max(kLongGap, kCountedBeats * Beat(i));
      const Microseconds earliest = i == 0 ? Microseconds(0) : lines_[i - 1].cleared;
      line.since = std::max(line.Begin() - lead, earliest);
    } else {
      const Microseconds gap = std::max(line.Begin() - lines_[i - 1].End(), Microseconds(0));
      line.since = lines_[i - 1].End() + std::min(kSoonestChange, gap / 2);
      lines_[i - 1].cleared = line.since;
    }
    if (i > 0) line.since = std::max(line.since, lines_[i - 1].since);
  }
}

bool LyricShow::CountsIn(std::size_t line) const {
  return line == 0 || lines_[line].Begin() - lines_[line - 1].End() > kLongGap;
}

LyricFrame LyricShow::At(Microseconds time) const {
  LyricFrame frame;
  const auto following =
      std::upper_bound(lines_.begin(), lines_.end(), time,
                       [](Microseconds t, const ShownLine& line) { return t < line.since; });
  if (following == lines_.begin()) {
    frame.title = true;
    return frame;
  }
  const std::size_t number = static_cast<std::size_t>(following - lines_.begin()) - 1;
  if (following != lines_.end()) frame.next = number + 1;
  const ShownLine& line = lines_[number];
  if (time >= line.cleared) return frame;
  frame.current = number;
  ShowSung(line, time, frame);
  const Microseconds ahead = line.Begin() - time;
  if (CountsIn(number) && ahead > Microseconds(0) && ahead <= kCountedBeats * Beat(number)) {
    frame.count_in = static_cast<int>((ahead + Beat(number) - Microseconds(1)) / Beat(number));
  }
  ShowBall(number, time, frame);
  return frame;
}

void LyricShow::ShowSung(const ShownLine& line, Microseconds time, LyricFrame& frame) const {
  const auto following =
      std::upper_bound(line.syllables.begin(), line.syllables.end(), time,
                       [](Microseconds t, const ShownSyllable& syllable) { return t < syllable.at; });
  if (following == line.syllables.begin()) return;
  const ShownSyllable& syllable = *std::prev(following);
  frame.syllable = static_cast<std::size_t>(following - line.syllables.begin()) - 1;
  frame.sweep = Share(time - syllable.at, syllable.until - syllable.at);
  FindWord(line, syllable, frame);
}

void LyricShow::ShowBall(std::size_t number, Microseconds time, LyricFrame& frame) const {
  const ShownLine& line = lines_[number];
  BallPlace ball;
  if (frame.count_in > 0) {  // it bounces on the first syllable, once a beat
    const Microseconds into = Beat(number) - (line.Begin() - time) % Beat(number);
    ball = {std::size_t{0}, 0, 0, JumpHeight(Share(into, Beat(number)))};
  } else if (!frame.syllable) {
    if (CountsIn(number)) return;
    const Microseconds jump = std::min(line.Begin() - line.since, kLongestJump);
    ball.way = Share(time - (line.Begin() - jump), jump);
    ball.height = JumpHeight(ball.way);
  } else if (*frame.syllable + 1 == line.syllables.size()) {
    ball = {frame.syllable, *frame.syllable, 0, 0};
  } else {
    const Microseconds from = line.syllables[*frame.syllable].at;
    const Microseconds to = line.syllables[*frame.syllable + 1].at;
    const Microseconds jump = std::min(to - from, kLongestJump);
    ball = {frame.syllable, *frame.syllable + 1, Share(time - (to - jump), jump), 0};
    ball.height = JumpHeight(ball.way);
  }
  frame.ball = ball;
}

}  // namespace karaoke
