// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/QuietCombo.h"

#include <QPainter>
#include <QStyledItemDelegate>
#include <QWheelEvent>
#include <algorithm>

#include "ui/widgets/Look.h"

namespace ui {

QuietCombo::QuietCombo(const Skin& skin, QWidget* parent) : QComboBox(parent), skin_(skin) {
  setAttribute(Qt::WA_Hover);
  setItemDelegate(new QStyledItemDelegate(this));  // the only one that heeds the style sheet
}

int QuietCombo::Height() const {
  return std::max(30, Em(*this, 2.4));
}

QSize QuietCombo::sizeHint() const {
  int widest = std::max(fontMetrics().averageCharWidth() * minimumContentsLength(),
                        fontMetrics().horizontalAdvance(placeholderText()));
  for (int i = 0; i < count(); ++i) widest = std::max(widest, fontMetrics().horizontalAdvance(itemText(i)));
  const bool pictures = count() > 0 && !itemIcon(0).isNull();
  const int picture = pictures ? iconSize().width() + Em(*this, 0.5) : 0;
  return {std::min(widest, Em(*this, 24)) + Em(*this, 3) + picture, Height()};
}

QSize QuietCombo::minimumSizeHint() const {
  return {std::min(sizeHint().width(), Em(*this, 14)), Height()};
}

void QuietCombo::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool pointed = isEnabled() && underMouse();
  painter.setPen(QPen(hasFocus() ? skin_.text
                      : pointed  ? skin_.decks[0]
                                 : skin_.line,
                      hasFocus() ? 2 * Line(*this) : Line(*this)));
  painter.setBrush(isEnabled() ? skin_.raised : skin_.panel);
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), Em(*this, 0.3), Em(*this, 0.3));
  const QColor ink = isEnabled() ? skin_.text : skin_.faint;
  const int arrow = Em(*this, 0.35);
  const QPointF tip(width() - Em(*this, 1.2), height() / 2.0 + arrow / 2.0);
  painter.setPen(QPen(ink, std::max(2.0, arrow / 2.5)));
  painter.drawPolyline(QPolygonF{tip - QPointF(arrow, arrow), tip, tip + QPointF(arrow, -arrow)});
  QRect room = rect().adjusted(Em(*this, 0.7), 0, -Em(*this, 2), 0);
  if (const QIcon icon = itemIcon(currentIndex()); !icon.isNull()) {
    const int side = iconSize().height();
    const QRect place(room.left(), (height() - side) / 2, side, side);
    icon.paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    room.setLeft(place.right() + Em(*this, 0.5));
  }
  const bool none = currentIndex() < 0;
  painter.setPen(none && isEnabled() ? skin_.dim : ink);
  painter.drawText(
      room, Qt::AlignVCenter | Qt::TextSingleLine,
      fontMetrics().elidedText(none ? placeholderText() : currentText(), Qt::ElideRight, room.width()));
}

void QuietCombo::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace ui
