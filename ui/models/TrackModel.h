// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <array>
#include <functional>
#include <optional>
#include <string>

#include "app/lists/TableSearch.h"
#include "catalogue/track_table.h"
#include "ui/models/GridShape.h"
#include "ui/models/TrackRows.h"
#include "ui/widgets/Look.h"

namespace app {
struct WorkstationView;
}

namespace ui {

/// The rows of a table for a grid. Reads cells as they are asked for, so a million rows cost nothing.
///
/// Law: the table tells nobody of its changes. Sync() finds rows that were appended, a table that became
/// shorter, and cells that were changed; whoever moves rows calls Reload().
class TrackModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// Columns of the catalogue's grid.
  enum Column { Deck, Artist, Title, Time, Bpm, Genre, Album, Year };

  /// Rows are dragged under the table's name; without one they are not dragged.
  TrackModel(const catalogue::track_table& table, std::optional<TableId> id, const GridShape& shape,
             const Look& look, QObject* parent = nullptr);

  void Sync();
  void Reload();
  /// Shows these rows of the table in this order; null: all as they stand.
  void ShowRows(app::TableSearch::Rows rows);
  /// Marks the rows whose files this says were played; count grows with them.
  using WasPlayed = std::function<bool(std::string_view filename)>;
  void MarkPlayed(WasPlayed was_played) { was_played_ = std::move(was_played); }
  void ShowPlayed(std::size_t count);
  /// Marks the rows whose files this says are not there; checks grow with each look at them.
  using IsMissing = std::function<bool(std::string_view filename)>;
  void MarkMissing(IsMissing is_missing) { is_missing_ = std::move(is_missing); }
  void ShowMissing(std::size_t checks);
  /// The mark in the head of a column of the table; none where the column is 0.
  void ShowSort(const catalogue::SortWish& sort);
  /// 1 upwards, -1 downwards; of a head.
  static constexpr int kSortRole = Qt::UserRole;
  /// "!" of a row whose file is not there, its chip; in a grid without chips that or "✓" of one that was
  /// played in front of its first text.
  static constexpr int kMarkRole = Qt::UserRole + 1;
  /// Marks the rows whose files are on the mixing decks.
  void ShowDecks(const app::WorkstationView& view);

  [[nodiscard]] const GridShape& Shape() const { return shape_; }
  [[nodiscard]] std::optional<TableId> Id() const { return id_; }
  /// For the eye; row from 1.
  [[nodiscard]] QString TitleOf(int row) const;
  /// Table row (from 1) of an index.
  [[nodiscard]] int TableRow(const QModelIndex& index) const { return TableRowAt(index.row()); }
  /// And of a place, from 0. Requires: it is shown.
  [[nodiscard]] int TableRowAt(int place) const {
    return order_ == nullptr ? place + 1 : (*order_)[static_cast<std::size_t>(place)];
  }
  /// These table rows (ascending) as they are dragged.
  [[nodiscard]] QMimeData* DataOf(std::vector<int> rows) const;
  /// Where a table row is shown, from 0; -1 where it is not.
  [[nodiscard]] int PlaceOf(int table_row) const;
  /// Of these table rows those that are shown, in the order of the grid: one look at it for all of them.
  [[nodiscard]] std::vector<int> PlacesOf(const std::vector<int>& table_rows) const;
  [[nodiscard]] bool ShowsAll() const { return order_ == nullptr; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QStringList mimeTypes() const override;
  [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;

 private:
  [[nodiscard]] const GridColumn& ColumnAt(int column) const;
  [[nodiscard]] int PlacesNow() const;
  /// Rows that were taken out of the table are not there until the next answer of the search.
  void DropMissingRows();
  [[nodiscard]] bool Played(int row) const;
  [[nodiscard]] bool Missing(int row) const;
  [[nodiscard]] QVariant ChipOf(int row, int role) const;
  void Repaint();
  [[nodiscard]] QString TextAt(int row, int column) const;
  /// A cell of a tempo that is not known because nothing was analysed.
  [[nodiscard]] bool LacksAnalysis(int row, const GridColumn& column) const;
  [[nodiscard]] int AlignmentOf(int column) const;
  /// Deck that holds the row's file; 0 is none.
  [[nodiscard]] int DeckOf(int row) const;

  const catalogue::track_table& table_;
  std::optional<TableId> id_;
  const GridShape& shape_;
  Look look_;
  app::TableSearch::Rows order_;
  catalogue::track_table seen_;  ///< a copy, which shows whether anything was changed since
  int table_rows_;               ///< when it was looked at last
  int rows_;                     ///< shown
  WasPlayed was_played_;
  std::size_t played_ = 0;
  IsMissing is_missing_;
  std::size_t missing_checks_ = 0;
  catalogue::SortWish sort_;
  std::array<std::string, 2> on_decks_;
};

}  // namespace ui
