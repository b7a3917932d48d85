// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <array>
#include <optional>
#include <string>

#include "app/WorkstationView.h"
#include "catalogue/track_table.h"
#include "ui/widgets/Look.h"

class QMimeData;

namespace ui {

/// The rows of a track table for a grid. Reads cells as they are asked for, so a million rows cost nothing.
///
/// Law: the table tells nobody of its changes, therefore Sync() looks for them; rows are only appended, or
/// the whole is another one.
class CatalogueModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Deck, Artist, Title, Time, Bpm, Genre, Album, Year, kColumns };

  CatalogueModel(const catalogue::track_table& table, const Look& look, QObject* parent = nullptr);

  void Sync();
  /// Marks the rows whose files are on the mixing decks.
  void ShowDecks(const app::WorkstationView& view);

  /// The table's row (from 1) that is dragged.
  [[nodiscard]] static std::optional<int> RowIn(const QMimeData& data);
  [[nodiscard]] static int TableRow(const QModelIndex& index) { return index.row() + 1; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QStringList mimeTypes() const override;
  [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;

 private:
  [[nodiscard]] QString TextAt(int row, int column) const;
  /// Deck that holds the row's file; 0 is none.
  [[nodiscard]] int DeckOf(int row) const;

  const catalogue::track_table& table_;
  Look look_;
  int rows_;
  std::array<std::string, 2> on_decks_;
};

}  // namespace ui
