// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/TrackDelegate.h"

#include <QFontInfo>
#include <QPainter>

#include "ui/widgets/Look.h"
#include "ui/widgets/TrackGrid.h"

namespace ui {
namespace {

constexpr int kBarLines = 4;

}  // namespace

QRect TextRoom(const QRect& cell, int alignment, const QFont& font) {
  const bool number = (alignment & Qt::AlignRight) != 0;
  const int pad = QFontInfo(font).pixelSize() * (number ? 3 : 6) / 10;
  return cell.adjusted(pad, 0, number ? -pad : 0, 0);
}

TrackDelegate::TrackDelegate(const Skin& skin, TrackGrid& grid)
    : QStyledItemDelegate(&grid), skin_(skin), grid_(grid) {}

void TrackDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
  const bool chosen = option.state.testFlag(QStyle::State_Selected);
  const bool odd = index.row() % 2 == 1;
  painter->fillRect(option.rect, chosen ? skin_.chosen : odd ? skin_.stripe : skin_.panel);
  const QVariant colour = index.data(Qt::ForegroundRole);
  const QString text = index.data(Qt::DisplayRole).toString();
  const int alignment = index.data(Qt::TextAlignmentRole).toInt();
  if (chosen && index.column() == 0 && grid_.IsActive()) {
    painter->fillRect(option.rect.adjusted(0, 0, kBarLines * Line(grid_) - option.rect.width(), 0),
                      skin_.text);
  }
  if (alignment == Qt::AlignCenter) {
    if (!text.isEmpty()) PaintChip(*painter, option, text, colour.value<QColor>());
    return;
  }
  const QRect room = TextRoom(option.rect, alignment, option.font);
  painter->setFont(option.font);
  painter->setPen(colour.isValid() ? colour.value<QColor>() : skin_.text);
  painter->drawText(room, alignment | Qt::TextSingleLine,
                    option.fontMetrics.elidedText(text, Qt::ElideRight, room.width()));
}

void TrackDelegate::PaintChip(QPainter& painter, const QStyleOptionViewItem& option, const QString& text,
                              const QColor& colour) const {
  const int side = QFontInfo(option.font).pixelSize() * 3 / 2;
  QRect chip(0, 0, side, side);
  chip.moveCenter(option.rect.center());
  painter.fillRect(chip, colour);
  QFont bold = option.font;
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(skin_.on_deck);
  painter.drawText(chip, Qt::AlignCenter, text);
}

}  // namespace ui
