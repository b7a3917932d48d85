// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <string>
#include <vector>

#include "app/Workstation.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QFileDialog;
class QHBoxLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace ui {

class CatalogueModel;
class ElidedLabel;
class TrackGrid;

/// The catalogue: its grid, what is being added to it, and what could not be added.
class MusicPage final : public Surface {
  Q_OBJECT

 public:
  MusicPage(catalogue::track_table& table, const Look& look, QWidget* parent = nullptr);

  void Show(const app::WorkstationView& view);
  /// Table row (from 1) under the cursor; 0 is none.
  [[nodiscard]] int ChosenRow() const;
  void ChooseRow(int row);
  /// The keys go to the grid.
  void TakeFocus();

  /// How far the analysis of new files is; nothing when none is under way.
  void ShowAdding(const app::AddingProgress& progress);
  /// What came of so many files, with a sentence for each one left out.
  void ShowAdded(int files, int rows, const std::vector<std::string>& refused);

 Q_SIGNALS:
  void RowChosen(int row);
  void RowWanted(int deck, int row);
  void FilesWanted(std::vector<std::string> paths);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QHBoxLayout* MakeHead();
  QWidget* MakeReport();
  void ShowCount();
  void AskForFiles();
  QFileDialog* MakeDialog();

  const catalogue::track_table& table_;
  Look look_;
  CatalogueModel* model_;
  TrackGrid* grid_;
  QLabel* empty_;
  QLabel* count_;
  ElidedLabel* progress_;
  QWidget* report_;
  QLabel* report_head_;
  QPlainTextEdit* report_list_;
  QPointer<QFileDialog> dialog_;
  int shown_rows_ = -1;
};

}  // namespace ui
