// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/PageButton.h"

#include <QDragEnterEvent>

#include "ui/widgets/Look.h"

namespace ui {

PageButton::PageButton(const QString& caption, Drops drops, QWidget* parent) : QPushButton(caption, parent) {
  SetKind(*this, "page");
  setCheckable(true);
  setAcceptDrops(drops == Drops::Taken);
}

void PageButton::dragEnterEvent(QDragEnterEvent* event) {
  if (!TrackRowsIn(*event->mimeData())) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void PageButton::dropEvent(QDropEvent* event) {
  const auto rows = TrackRowsIn(*event->mimeData());
  if (!rows) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
  Q_EMIT RowsDropped(*rows);
}

}  // namespace ui
