// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/ElidedLabel.h"

#include <QPainter>
#include <QTextLayout>
#include <algorithm>

namespace ui {
namespace {

constexpr int kMostCharacters = 60;  ///< of a label of natural width

}  // namespace

ElidedLabel::ElidedLabel(Width width, QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(width == Width::Natural ? QSizePolicy::Maximum : QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::UseTwoLines() {
  two_lines_ = true;
  setSizePolicy(sizePolicy().horizontalPolicy(), QSizePolicy::Ignored);
}

void ElidedLabel::Show(const QString& shown) {
  if (shown == text()) return;
  setText(shown);
  UpdateTip();
}

QSize ElidedLabel::sizeHint() const {
  const int limit = fontMetrics().averageCharWidth() * kMostCharacters;
  return {std::min(fontMetrics().horizontalAdvance(text()) + 2, limit), fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
  return {0, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  const auto draw = [&](const QRect& room, const QString& part) {
    painter.drawText(room, static_cast<int>(alignment()) | Qt::TextSingleLine,
                     fontMetrics().elidedText(part, Qt::ElideRight, width()));
  };
  const bool breaks = two_lines_ && height() >= 2 * fontMetrics().ascent() + fontMetrics().descent() &&
                      fontMetrics().horizontalAdvance(text()) > width();
  if (!breaks) return draw(rect(), text());
  QTextLayout layout(text(), font());
  layout.beginLayout();
  QTextLine line = layout.createLine();
  line.setLineWidth(width());
  layout.endLayout();
  const int half = height() / 2;
  draw(QRect(0, 0, width(), half), text().left(line.textLength()).trimmed());
  draw(QRect(0, half, width(), height() - half), text().mid(line.textLength()));
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  UpdateTip();
}

void ElidedLabel::UpdateTip() {
  const bool cut = fontMetrics().horizontalAdvance(text()) > width();
  setToolTip(!tip_.isEmpty() ? tip_
             : cut           ? QStringLiteral("<qt>%1</qt>").arg(text().toHtmlEscaped())
                             : QString());
}

void ElidedLabel::SetTip(const QString& tip) {
  tip_ = tip;
  UpdateTip();
}

}  // namespace ui
