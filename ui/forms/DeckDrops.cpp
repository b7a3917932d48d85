// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/DeckDrops.h"

#include <QDragEnterEvent>
#include <QMimeData>

#include "ui/models/DroppedFiles.h"

namespace ui {

DeckDrops::DeckDrops(int deck, const QColor& ground, QWidget* parent)
    : Surface(ground, parent), number_(deck) {
  setAcceptDrops(true);
}

void DeckDrops::dragEnterEvent(QDragEnterEvent* event) {
  const bool files = event->mimeData()->hasUrls() && !DroppedFiles(*event->mimeData()).empty();
  if (!files && !TrackRowsIn(*event->mimeData())) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
  SetWelcoming(true);
}

void DeckDrops::dragLeaveEvent(QDragLeaveEvent*) {
  SetWelcoming(false);
}

void DeckDrops::dropEvent(QDropEvent* event) {
  SetWelcoming(false);
  event->setDropAction(Qt::CopyAction);
  event->accept();
  if (const auto rows = TrackRowsIn(*event->mimeData())) {
    Q_EMIT RowsDropped(number_, *rows);
  } else {
    Q_EMIT FilesDropped(number_, DroppedFiles(*event->mimeData()));
  }
}

}  // namespace ui
