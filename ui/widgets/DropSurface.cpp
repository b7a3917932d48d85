// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/DropSurface.h"

#include <QDragEnterEvent>
#include <QMimeData>

#include "ui/models/DroppedFiles.h"

namespace ui {

void DropSurface::dragEnterEvent(QDragEnterEvent* event) {
  if (!event->mimeData()->hasUrls() || DroppedFiles(*event->mimeData()).empty()) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
  SetWelcoming(true);
}

void DropSurface::dragLeaveEvent(QDragLeaveEvent*) {
  SetWelcoming(false);
}

void DropSurface::dropEvent(QDropEvent* event) {
  SetWelcoming(false);
  event->setDropAction(Qt::CopyAction);
  event->accept();
  Q_EMIT FilesWanted(DroppedFiles(*event->mimeData()));
}

}  // namespace ui
