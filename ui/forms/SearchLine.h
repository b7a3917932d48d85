// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <cstdint>

#include "app/lists/TableSearch.h"
#include "ui/widgets/Look.h"

class QLabel;
class QLineEdit;

namespace ui {

class TrackGrid;
class TrackModel;

/// The line above a grid that its rows are looked for with, and how many were found. It also brings the grid
/// into the order that a click on a column's head asks for: upwards, downwards, as the rows stand.
class SearchLine final : public QWidget {
  Q_OBJECT

 public:
  struct Hints {
    QString field;  ///< in the empty field: what can be looked for in this table
    QString tip;
    QString grid;  ///< where there is nothing to look for
  };
  SearchLine(const QString& name, app::TableSearch& search, TrackModel& model, TrackGrid& grid,
             const Hints& hints, const Look& look, QWidget* parent = nullptr);

  /// Once a frame: what was found is shown.
  void Show();
  void TakeFocus();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void SortBy(int column);
  /// What was chosen stays so where it is still shown.
  void ShowRows();
  void ShowCount();
  [[nodiscard]] bool Escape();

  app::TableSearch& search_;
  TrackModel& model_;
  TrackGrid& grid_;
  QString hint_;
  Look look_;
  QLineEdit* field_;
  QLabel* found_;
  std::uint64_t shown_;
};

}  // namespace ui
