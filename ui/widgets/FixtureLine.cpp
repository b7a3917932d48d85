// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/FixtureLine.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <utility>

#include "ui/widgets/Look.h"

namespace ui {

FixtureLine::FixtureLine(const Skin& skin, QWidget* parent) : QWidget(parent), skin_(skin) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize FixtureLine::sizeHint() const {
  return {Em(*this, 10), Em(*this, 1.6)};
}

void FixtureLine::Show(std::vector<Mark> marks) {
  if (marks == marks_) return;
  marks_ = std::move(marks);
  update();
}

void FixtureLine::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), skin_.panel);
  painter.setPen(skin_.text);
  for (const Mark& mark : marks_) {
    const QRect place(mark.left + Line(*this), 0, mark.right - mark.left - 2 * Line(*this), height());
    painter.fillRect(place, skin_.raised);
    const QRect room = place.adjusted(Em(*this, 0.2), 0, -Em(*this, 0.2), 0);
    painter.drawText(room, Qt::AlignCenter,
                     fontMetrics().elidedText(mark.name, Qt::ElideRight, room.width()));
  }
}

bool FixtureLine::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  for (const Mark& mark : marks_) {
    if (help->pos().x() < mark.left || help->pos().x() >= mark.right) continue;
    QToolTip::showText(help->globalPos(), mark.tip, this);
    return true;
  }
  QToolTip::hideText();
  return true;
}

}  // namespace ui
