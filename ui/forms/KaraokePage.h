// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>

#include "ui/widgets/DropSurface.h"
#include "ui/widgets/Look.h"

class QFileDialog;
class QHBoxLayout;
class QLabel;

namespace app {
class ListStation;
struct AddingProgress;
struct IntakeOutcome;
}  // namespace app

namespace catalogue {
class track_table;
}  // namespace catalogue

namespace ui {

class AddingBar;
class ContextMenu;
class ListButtons;
class ReportList;
class SearchLine;
class TrackGrid;
class TrackModel;

/// The karaoke songs.
class KaraokePage final : public DropSurface {
  Q_OBJECT

 public:
  KaraokePage(const catalogue::track_table& table, app::ListStation& lists, const Look& look,
              QWidget* parent = nullptr);

  void Show(const app::AddingProgress& adding);
  /// The table is another one.
  void Reload();
  void TakeFocus();
  /// The keys go to the search field.
  void Find();
  [[nodiscard]] std::vector<int> ChosenRows() const;
  /// On the rows.
  [[nodiscard]] ContextMenu& RowMenu() { return *menu_; }
  [[nodiscard]] TrackModel& Rows() { return *model_; }
  /// What came of deleting, with a sentence for each file that is still there.
  void ShowDeleted(const std::vector<std::string>& kept);
  /// A sentence about a song that could not be played.
  void ShowFailure(const std::string& sentence);
  /// What came of adding, and the row that is to be seen, 0 for none.
  void ShowAdded(const app::IntakeOutcome& outcome, int row);

 Q_SIGNALS:
  /// Table row, from 1.
  void SongWanted(int row);
  void RemoveWanted();
  void DeleteWanted();
  void BringBackWanted();
  void StopWanted();

 private:
  [[nodiscard]] QHBoxLayout* MakeHead();
  void AskForFiles();
  void AskForFolder();
  [[nodiscard]] QFileDialog* MakeDialog();
  void ShowCount();

  const catalogue::track_table& table_;
  app::ListStation& lists_;
  Look look_;
  TrackModel* model_;
  TrackGrid* grid_;
  SearchLine* search_;
  QLabel* count_;
  AddingBar* adding_;
  ListButtons* buttons_;
  ContextMenu* menu_;
  ReportList* report_;
  QPointer<QFileDialog> dialog_;
  int shown_rows_ = -1;
};

}  // namespace ui
