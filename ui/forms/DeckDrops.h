// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "ui/models/TrackRows.h"
#include "ui/widgets/Surface.h"

namespace ui {

/// A form of a deck: rows of a table and files can be dropped on it, to be loaded.
class DeckDrops : public Surface {
  Q_OBJECT

 public:
  DeckDrops(int deck, const QColor& ground, QWidget* parent = nullptr);

 Q_SIGNALS:
  /// Rows of a table were dropped on the deck.
  void RowsDropped(int deck, ui::TrackRows rows);
  /// Files were dropped on the deck.
  void FilesDropped(int deck, std::vector<std::string> paths);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  const int number_;
};

}  // namespace ui
