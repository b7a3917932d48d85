// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QPainterPath>
#include <QString>
#include <QTextLayout>

namespace ui {

/// One line of text, shaped as a whole, as outlines and as places of its letters.
/// Threads: any, one at a time.
class TextShape {
 public:
  TextShape(const QString& text, const QFont& font);

  [[nodiscard]] double Width() const { return width_; }
  [[nodiscard]] double Height() const { return line_.height(); }
  [[nodiscard]] double Ascent() const { return line_.ascent(); }
  /// Where a letter begins and where it ends in the direction of its script; right to left, it begins on its
  /// right.
  [[nodiscard]] double Begin(int letter) const { return line_.cursorToX(letter, QTextLine::Leading); }
  [[nodiscard]] double End(int letter) const { return line_.cursorToX(letter, QTextLine::Trailing); }
  /// Outlines of all letters; the line's top left lies at 0, 0.
  [[nodiscard]] QPainterPath Outline() const;

 private:
  QTextLayout layout_;
  QTextLine line_;
  double width_ = 0;
};

}  // namespace ui
