// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/TrackDelegate.h"

#include <QFontInfo>
#include <QPainter>

#include "ui/models/TrackModel.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/TrackGrid.h"

namespace ui {
namespace {

constexpr int kBarLines = 4;

int ChipSide(const QFont& font) {
  return QFontInfo(font).pixelSize() * 3 / 2;
}

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
  const QString mark = index.data(TrackModel::kMarkRole).toString();
  if (alignment == Qt::AlignCenter) {
    if (text.isEmpty()) return;
    const Chip chip = text == mark ? Chip::Outlined : Chip::Filled;
    PaintChip(*painter, option.rect, option.font, text, colour.value<QColor>(), chip);
    return;
  }
  QRect room = TextRoom(option.rect, alignment, option.font);
  if (!mark.isEmpty()) {
    QRect place(room.left(), room.top(), ChipSide(option.font), room.height());
    const bool missing = mark == QLatin1String("!");
    PaintChip(*painter, place, option.font, mark, missing ? skin_.warning : skin_.dim, Chip::Outlined);
    room.setLeft(place.right() + ChipSide(option.font) / 3);
  }
  painter->setFont(option.font);
  painter->setPen(colour.isValid() ? colour.value<QColor>() : skin_.text);
  painter->drawText(room, alignment | Qt::TextSingleLine,
                    option.fontMetrics.elidedText(text, Qt::ElideRight, room.width()));
}

void TrackDelegate::PaintChip(QPainter& painter, const QRect& cell, const QFont& font, const QString& text,
                              const QColor& colour, Chip look) const {
  const int side = ChipSide(font);
  QRect chip(0, 0, side, side);
  chip.moveCenter(cell.center());
  if (look == Chip::Filled) {
    painter.fillRect(chip, colour);
  } else {
    const int line = Line(grid_);
    painter.setPen(QPen(colour, line, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(chip.adjusted(line / 2, line / 2, -(line + 1) / 2, -(line + 1) / 2));
  }
  QFont bold = font;
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(look == Chip::Filled ? skin_.on_deck : colour);
  painter.drawText(chip, Qt::AlignCenter, text);
}

}  // namespace ui
