// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPushButton>

#include "ui/models/TrackRows.h"

namespace ui {

/// Button of a page; rows may be dropped on that of a page with a list, so that the list need not be seen.
class PageButton final : public QPushButton {
  Q_OBJECT

 public:
  enum class Drops { Taken, Refused };

  PageButton(const QString& caption, Drops drops, QWidget* parent = nullptr);

 Q_SIGNALS:
  void RowsDropped(ui::TrackRows rows);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
};

}  // namespace ui
