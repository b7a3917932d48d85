// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTableView>

namespace ui {

/// A grid of tracks with rows of one fixed height; Enter and a double click choose a row.
class TrackGrid final : public QTableView {
  Q_OBJECT

 public:
  explicit TrackGrid(QWidget* parent = nullptr);

  /// Table row (from 1) under the cursor; 0 is none.
  [[nodiscard]] int ChosenRow() const;

 Q_SIGNALS:
  /// Table row, from 1.
  void Chosen(int row);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void startDrag(Qt::DropActions actions) override;

 private:
  void SizeRows();
  void SizeColumns();
};

}  // namespace ui
