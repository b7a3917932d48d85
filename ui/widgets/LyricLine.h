// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPalette>
#include <string>
#include <utility>
#include <vector>

#include "karaoke/LyricPainter.h"
#include "karaoke/LyricShow.h"

namespace ui {

/// A display in the units of its drawing: small ones are drawn as they are, larger ones as a picture of 480
/// units that is enlarged, outlines and all.
struct LyricCanvas {
  explicit LyricCanvas(QSize pixels);

  QSize pixels;
  double scale;  ///< pixels a unit
  double width;  ///< in units
  double height;

  bool operator==(const LyricCanvas& other) const { return pixels == other.pixels; }
};

/// A part of a line that stands in one row.
struct LyricRow {
  QString text;
  int first = 0;  ///< letter of the line that it begins with
  double width = 0;
  double height = 0;
  double ascent = 0;
  std::vector<double> begins;  ///< of each letter, from the row's left
  std::vector<double> ends;
};

/// Where the letters of a line stand, in units of the canvas.
///
/// A line that is too long is broken at blanks, or between letters of scripts without them, and made smaller
/// where that is not enough. Threads: any.
class LyricLine {
 public:
  LyricLine() = default;
  /// coding: of the line's bytes, as DecodeLyric takes it. points: of the letters. share: how much of the
  /// canvas's height its rows may take.
  LyricLine(const karaoke::ShownLine& line, std::string coding, karaoke::FontObject font,
            const LyricCanvas& canvas, double share);

  [[nodiscard]] const std::vector<LyricRow>& Rows() const { return rows_; }
  [[nodiscard]] const karaoke::FontObject& Font() const { return font_; }
  /// From one row to the next.
  [[nodiscard]] double Pitch() const { return pitch_; }

  struct Middle {
    std::size_t row = 0;
    double x = 0;
  };
  [[nodiscard]] Middle MiddleOf(std::size_t syllable) const;
  using Spans = std::vector<std::pair<double, double>>;
  /// What of a row is sung once the newest syllable is sung so far, 0 to 1; from left to right.
  [[nodiscard]] Spans SungOf(std::size_t row, std::size_t syllable, double sweep) const;
  /// What of a row belongs to a word, given in bytes of the line.
  [[nodiscard]] Spans WordOf(std::size_t row, std::size_t begin, std::size_t end) const;

 private:
  struct Letters {
    int begin = 0;
    int end = 0;
  };
  [[nodiscard]] int LetterAt(std::size_t byte) const;
  void Break(const LyricCanvas& canvas, double share);
  [[nodiscard]] std::vector<int> BreaksFor(int rows) const;
  void MakeRows(const std::vector<int>& breaks);
  [[nodiscard]] double Widest() const;
  [[nodiscard]] std::size_t RowOf(int letter) const;
  [[nodiscard]] std::pair<double, double> Edges(const LyricRow& row, Letters letters) const;

  std::string bytes_;
  std::string coding_;
  QString text_;
  std::vector<Letters> syllables_;
  karaoke::FontObject font_;
  std::vector<LyricRow> rows_;
  double pitch_ = 0;
};

/// A row of a line as a picture, in one role.
struct RowPicture {
  QImage image;
  double margin = 0;  ///< in pixels, on each side of the row
};

/// Draws each row of a line. Threads: any.
[[nodiscard]] std::vector<RowPicture> DrawRows(const LyricLine& line, karaoke::LyricRole role,
                                               karaoke::LyricDisplay display, const karaoke::LyricLook& look,
                                               const LyricCanvas& canvas, const QPalette& palette);

}  // namespace ui
