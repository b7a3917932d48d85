// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <array>
#include <string>

#include "app/files/IntakeOrder.h"
#include "catalogue/track_table.h"
#include "ui/models/TrackRows.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QFileDialog;
class QHBoxLayout;
class QLabel;
class QPushButton;

namespace app {
class Collections;
class ListStation;
struct IntakeOutcome;
struct WorkstationView;
}  // namespace app

namespace ui {

class AddingBar;
class ContextMenu;
class ReportList;
class TrackGrid;
class TrackModel;

/// One playlist: its rows, which are dragged in, out and about, and taken off again.
class PlaylistPanel final : public Surface {
  Q_OBJECT

 public:
  /// How wide the panel is: as its columns are described, or as there is room.
  enum class Width { Given, Stretches };

  PlaylistPanel(int number, app::Collections& collections, app::ListStation& lists, Width width,
                const Look& look, QWidget* parent = nullptr);

  void Show(const app::WorkstationView& view);
  /// After rows were moved or taken away by others.
  void Reload(int row_to_choose);
  [[nodiscard]] TrackRows ChosenRows() const;
  /// On the rows.
  [[nodiscard]] ContextMenu& RowMenu() { return *menu_; }
  /// The open button's file dialog.
  void AskForFile();
  /// The save button's.
  void AskWhereToSave();
  /// Whether the keys that load take its rows.
  void SetActive(bool active);
  void TakeFocus();
  [[nodiscard]] QSize sizeHint() const override;

 Q_SIGNALS:
  /// A sentence for the status line.
  void Told(const QString& sentence);
  void Entered(ui::TableId table);
  void RowChosen(ui::TrackRows row);
  void RowsDropped(ui::TrackRows rows, ui::TableId to, int before, ui::Leaving leaving);

 private:
  [[nodiscard]] QHBoxLayout* MakeHead();
  [[nodiscard]] QHBoxLayout* MakeButtons();
  void ShowMenu();
  void Open(const std::string& path);
  void AskForFolder();
  void Give(app::IntakeOrder order);
  void ShowAdded(const app::IntakeOutcome& outcome);
  void Listen();
  void ShowCount();
  void ShowTotal(int rows, std::int64_t seconds);
  void RemoveChosen();
  /// What comes onto a deck is brought into sight, so that the list goes along with the evening.
  void FollowDecks(const app::WorkstationView& view);

  app::Collections& collections_;
  app::ListStation& lists_;
  const int number_;
  const TableId id_;
  const app::ListId list_;
  catalogue::track_table& table_;
  Look look_;
  TrackModel* model_;
  TrackGrid* grid_;
  QLabel* count_;
  QPushButton* open_;
  QPushButton* save_;
  QPushButton* remove_;
  AddingBar* adding_;
  ReportList* report_;
  ContextMenu* menu_;
  QPointer<QFileDialog> dialog_;
  catalogue::track_table counted_;       ///< as its total was shown
  std::array<std::string, 2> on_decks_;  ///< files, as they were followed
};

}  // namespace ui
