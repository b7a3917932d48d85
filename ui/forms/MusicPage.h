// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <string>
#include <vector>

#include "ui/models/TrackRows.h"
#include "ui/widgets/DropSurface.h"
#include "ui/widgets/Look.h"

class QFileDialog;
class QHBoxLayout;
class QLabel;

namespace app {
class Collections;
class ListStation;
struct AddingProgress;
struct IntakeOutcome;
struct WorkstationView;
}  // namespace app

namespace catalogue {
class track_table;
}  // namespace catalogue

namespace ui {

class AddingBar;
class BatchBar;
class ContextMenu;
class ListButtons;
class ListenBar;
class ReportList;
class SearchLine;
class TrackGrid;
class TrackModel;

/// The catalogue: its grid, what is being added to it, and what could not be added.
class MusicPage final : public DropSurface {
  Q_OBJECT

 public:
  MusicPage(app::Collections& collections, app::ListStation& lists, ListenBar& listen, BatchBar& batch,
            const Look& look, QWidget* parent = nullptr);

  void Show(const app::WorkstationView& view);
  /// Table row (from 1) under the cursor; 0 is none.
  [[nodiscard]] int ChosenRow() const;
  [[nodiscard]] TrackRows ChosenRows() const;
  [[nodiscard]] int ChosenCount() const;
  /// One row is chosen, and no tempo is known of it because it was not analysed.
  [[nodiscard]] bool ChosenLacksAnalysis() const;
  /// On the rows.
  [[nodiscard]] ContextMenu& RowMenu() { return *menu_; }
  /// Whether the keys that load take its rows.
  void SetActive(bool active);
  void ChooseRow(int row);
  /// The keys go to the grid.
  void TakeFocus();
  /// The keys go to the search field.
  void Find();

  /// How far the analysis of new files is; nothing when none is under way.
  void ShowAdding(const app::AddingProgress& progress);
  void ShowAdded(const app::IntakeOutcome& outcome);
  /// What came of deleting, with a sentence for each file that is still there.
  void ShowDeleted(int rows, const std::vector<std::string>& kept);
  /// The table is another one: what was scanned took its place.
  void Reload();

 Q_SIGNALS:
  void Entered(ui::TableId table);
  void RowChosen(ui::TrackRows row);
  void RowWanted(int deck);
  void RemoveWanted();
  void DeleteWanted();
  void BringBackWanted();

 private:
  QHBoxLayout* MakeHead(ListenBar& listen);
  void ShowCount();
  void AskForFiles();
  void AskForFolder();
  void ReadRowsInSight();
  QFileDialog* MakeDialog();

  app::Collections& collections_;
  const catalogue::track_table& table_;
  app::ListStation& lists_;
  Look look_;
  TrackModel* model_;
  TrackGrid* grid_;
  SearchLine* search_;
  QLabel* empty_;
  QLabel* count_;
  AddingBar* adding_;
  ListButtons* buttons_;
  ContextMenu* menu_;
  ReportList* report_;
  QPointer<QFileDialog> dialog_;
  int shown_rows_ = -1;
  std::size_t filled_ = 0;
};

}  // namespace ui
