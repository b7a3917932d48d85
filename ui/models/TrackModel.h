// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <array>
#include <optional>
#include <string>

#include "app/WorkstationView.h"
#include "catalogue/track_table.h"
#include "ui/models/GridShape.h"
#include "ui/models/TrackRows.h"
#include "ui/widgets/Look.h"

namespace ui {

/// The rows of a table for a grid. Reads cells as they are asked for, so a million rows cost nothing.
///
/// Law: the table tells nobody of its changes. Sync() finds rows that were appended and a table that became
/// shorter; whoever changes or moves rows calls Reload().
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
  /// Marks the rows whose files are on the mixing decks.
  void ShowDecks(const app::WorkstationView& view);

  [[nodiscard]] const GridShape& Shape() const { return shape_; }
  [[nodiscard]] std::optional<TableId> Id() const { return id_; }
  /// For the eye; row from 1.
  [[nodiscard]] QString TitleOf(int row) const;
  /// Table row (from 1) of an index.
  [[nodiscard]] static int TableRow(const QModelIndex& index) { return index.row() + 1; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QStringList mimeTypes() const override;
  [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;

 private:
  [[nodiscard]] const GridColumn& ColumnAt(int column) const;
  [[nodiscard]] QString TextAt(int row, int column) const;
  [[nodiscard]] int AlignmentOf(int column) const;
  /// Deck that holds the row's file; 0 is none.
  [[nodiscard]] int DeckOf(int row) const;

  const catalogue::track_table& table_;
  std::optional<TableId> id_;
  const GridShape& shape_;
  Look look_;
  int rows_;
  std::array<std::string, 2> on_decks_;
};

}  // namespace ui
