// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/TextShape.h"

#include <QGlyphRun>
#include <QRawFont>
#include <QTextOption>

namespace ui {

TextShape::TextShape(const QString& text, const QFont& font) : layout_(text, font) {
  QTextOption option;
  option.setWrapMode(QTextOption::NoWrap);
  option.setUseDesignMetrics(true);
  layout_.setTextOption(option);
  layout_.beginLayout();
  line_ = layout_.createLine();
  layout_.endLayout();
  width_ = line_.isValid() ? line_.naturalTextWidth() : 0;
}

QPainterPath TextShape::Outline() const {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  for (const QGlyphRun& run : layout_.glyphRuns()) {
    const QRawFont font = run.rawFont();
    const auto glyphs = run.glyphIndexes();
    const auto places = run.positions();
    for (qsizetype i = 0; i < glyphs.size(); ++i) {
      path.addPath(font.pathForGlyph(glyphs[i]).translated(places[i]));
    }
  }
  return path;
}

}  // namespace ui
