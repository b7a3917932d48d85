// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/ColourButton.h"

#include <QPainter>

#include "ui/widgets/Look.h"

namespace ui {

ColourButton::ColourButton(const QString& caption, const Skin& skin, QWidget* parent)
    : QAbstractButton(parent), skin_(skin) {
  setText(caption);
  setFocusPolicy(Qt::StrongFocus);
}

void ColourButton::SetColour(const QColor& colour) {
  colour_ = colour;
  update();
}

QSize ColourButton::sizeHint() const {
  return {Em(*this, 2.6), Em(*this, 2)};
}

void ColourButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colour_);
  const int edge = Line(*this) * (hasFocus() ? 3 : 1);
  painter.setPen(QPen(hasFocus() ? skin_.text : skin_.line, edge));
  painter.drawRect(rect().adjusted(edge / 2, edge / 2, -1 - edge / 2, -1 - edge / 2));
  painter.setPen(qGray(colour_.rgb()) > 110 ? Qt::black : Qt::white);
  painter.drawText(rect(), Qt::AlignCenter, text());
}

}  // namespace ui
