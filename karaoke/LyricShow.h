// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "karaoke/Lyric.h"

namespace karaoke {

/// A syllable in its line.
struct ShownSyllable {
  Microseconds at{0};
  Microseconds until{0};  ///< when its sweep is through
  std::size_t begin = 0;  ///< bytes of the line's text
  std::size_t end = 0;    ///< without blanks behind it
};

/// A line that has something to sing.
struct ShownLine {
  std::string text;
  std::vector<ShownSyllable> syllables;  ///< at least one, in the order of time
  Microseconds since{0};                 ///< when it becomes the current line
  Microseconds cleared{0};               ///< when it goes without another one taking its place

  [[nodiscard]] Microseconds Begin() const { return syllables.front().at; }
  [[nodiscard]] Microseconds End() const { return syllables.back().until; }
};

/// Where the ball is: on its way from one syllable's middle to the next one's.
struct BallPlace {
  std::optional<std::size_t> from;  ///< nothing is the left edge of the line
  std::size_t to = 0;
  double way = 0;     ///< 0 at from, 1 at to
  double height = 0;  ///< 0 touches down, 1 is the top of a jump
  bool operator==(const BallPlace&) const = default;
};

/// What the singers see at one time.
struct LyricFrame {
  bool title = false;                  ///< the title card; nothing else then
  std::optional<std::size_t> current;  ///< lines by number
  std::optional<std::size_t> next;
  std::optional<std::size_t> syllable;  ///< of the current line: the newest one begun
  double sweep = 0;                     ///< how much of it is sung, 0 to 1
  std::size_t word_begin = 0;           ///< bytes of the word it belongs to
  std::size_t word_end = 0;
  int count_in = 0;  ///< beats left until the line begins, 4 to 1; 0 is none
  std::optional<BallPlace> ball;
  bool operator==(const LyricFrame&) const = default;
};

/// When which words of a song are shown; everything is a function of the time in the song.
///
/// Threads: any; it never changes.
class LyricShow {
 public:
  LyricShow() = default;
  explicit LyricShow(const Lyric& lyric);

  [[nodiscard]] const std::vector<ShownLine>& Lines() const { return lines_; }
  /// Requires nothing: before the song and behind it is shown what stands at its ends.
  [[nodiscard]] LyricFrame At(Microseconds time) const;

 private:
  [[nodiscard]] Microseconds Beat(std::size_t line) const { return beats_[line]; }
  /// The pause before a line that is long enough to count in.
  [[nodiscard]] bool CountsIn(std::size_t line) const;
  void PlaceLines();
  void ShowSung(const ShownLine& line, Microseconds time, LyricFrame& frame) const;
  void ShowBall(std::size_t number, Microseconds time, LyricFrame& frame) const;

  std::vector<ShownLine> lines_;
  std::vector<Microseconds> beats_;  ///< a quarter note where each line begins
};

}  // namespace karaoke
