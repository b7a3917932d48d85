// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTableView>
#include <string>
#include <vector>

#include "ui/models/TrackRows.h"
#include "ui/skins/Skin.h"

namespace ui {

class TrackModel;

/// A grid of tracks with rows of one fixed height. Enter and a double click choose a row; rows are dragged,
/// and dropped between the rows of a grid that takes them.
class TrackGrid final : public QTableView {
  Q_OBJECT

 public:
  TrackGrid(TrackModel& model, const Skin& skin, QWidget* parent = nullptr);

  /// Rows and files may be dropped between its rows.
  void TakeDrops();
  /// Shown where there are no rows.
  void SetHint(const QString& hint);
  /// Whether the keys that load take its rows; only there a bar marks what is chosen.
  void SetActive(bool active);
  [[nodiscard]] bool IsActive() const { return active_; }
  /// Table row (from 1) under the cursor; 0 is none.
  [[nodiscard]] int ChosenRow() const;
  /// Table rows that are chosen, ascending.
  [[nodiscard]] std::vector<int> ChosenRows() const;
  void ChooseRow(int row);
  /// Table rows that are in sight, as they are shown.
  [[nodiscard]] std::vector<int> RowsInSight() const;
  /// Scrolls to the row, unless a hand is at the grid.
  void BringIntoSight(int row);
  /// Where none is chosen yet.
  void ChooseFirst();
  /// A click on a column's head asks for its order.
  void LetSort();
  /// Room for all columns in their given widths, with the scroll bar.
  [[nodiscard]] int GivenWidth() const;

 Q_SIGNALS:
  /// Column of the table.
  void SortWanted(int column);
  /// The keys go to this grid now.
  void Entered();
  /// Table row, from 1.
  void Chosen(int row);
  /// The Delete key, with rows chosen.
  void RemoveWanted();
  /// Dropped before this row, from 1; one past the last is the end.
  void RowsDropped(ui::TrackRows rows, int before, ui::Leaving leaving);
  void FilesDropped(std::vector<std::string> paths, int before);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void startDrag(Qt::DropActions actions) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void SizeRows();
  void SizeColumns();
  /// Hides columns until the rest has room; gives the room that is left.
  int FitColumns();
  [[nodiscard]] bool Takes(const QDropEvent& event) const;
  /// Row before which something dropped at this height comes.
  [[nodiscard]] int GapAt(int height) const;
  void ShowGap(int gap);
  void PaintGap(QPainter& painter) const;
  [[nodiscard]] QPixmap DragPicture() const;

  TrackModel& rows_;
  const Skin& skin_;
  QString hint_;
  bool takes_drops_ = false;
  bool active_ = false;
  int gap_ = 0;  ///< row before which a drop would come; 0 is none
};

}  // namespace ui
