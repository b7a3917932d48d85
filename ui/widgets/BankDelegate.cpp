// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/BankDelegate.h"

#include <QPainter>

#include "ui/models/BankModel.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/PatternGrid.h"

namespace ui {

void BankDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  const int line = option.widget == nullptr ? 1 : Line(*option.widget);
  const bool chosen = (option.state & QStyle::State_Selected) != 0;
  const QVariant light = index.data(BankModel::kLightRole);
  painter->fillRect(option.rect, chosen ? skin_.chosen : skin_.panel);
  QColor ink = skin_.text;
  if (light.isValid()) {
    const QRect cell = option.rect.adjusted(2 * line, line, -2 * line, -line);
    painter->fillRect(cell, LightColour(skin_, light.toFloat()));
    ink = InkOn(skin_, light.toFloat());
  }
  painter->setPen(ink);
  painter->setFont(option.font);
  const auto alignment = light.isValid() ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter;
  painter->drawText(option.rect.adjusted(2 * line, 0, -2 * line, 0), int(alignment),
                    index.data(Qt::DisplayRole).toString());
  if ((option.state & QStyle::State_HasFocus) == 0) return;
  painter->setPen(QPen(skin_.text, 2 * line));
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(option.rect.adjusted(line, line, -line, -line));
}

}  // namespace ui
