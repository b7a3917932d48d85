// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/TrackModel.h"

#include <QMimeData>
#include <set>

#include "support/Text.h"
#include "ui/models/TrackText.h"
#include "ui/strings/Decode.h"

namespace ui {

TrackModel::TrackModel(const catalogue::track_table& table, std::optional<TableId> id, const GridShape& shape,
                       const Look& look, QObject* parent)
    : QAbstractTableModel(parent), table_(table), id_(id), shape_(shape), look_(look), rows_(table.Rows()) {}

void TrackModel::Sync() {
  const int rows = table_.Rows();
  if (rows == rows_) return;
  if (rows < rows_) return Reload();
  beginInsertRows({}, rows_, rows - 1);
  rows_ = rows;
  endInsertRows();
}

void TrackModel::Reload() {
  beginResetModel();
  rows_ = table_.Rows();
  endResetModel();
}

void TrackModel::ShowDecks(const app::WorkstationView& view) {
  if (on_decks_[0] == view.decks[0].filename && on_decks_[1] == view.decks[1].filename) return;
  on_decks_ = {view.decks[0].filename, view.decks[1].filename};
  if (rows_ > 0) Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
}

int TrackModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int TrackModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shape_.columns.size());
}

const GridColumn& TrackModel::ColumnAt(int column) const {
  return shape_.columns[static_cast<std::size_t>(column)];
}

int TrackModel::DeckOf(int row) const {
  const std::string_view filename = table_.Cell(row, shape_.filename);
  if (filename.empty()) return 0;
  if (filename == on_decks_[0]) return 1;
  return filename == on_decks_[1] ? 2 : 0;
}

QString TrackModel::TitleOf(int row) const {
  return TitleText(table_.Cell(row, shape_.title), table_.Cell(row, shape_.filename));
}

QString TrackModel::TextAt(int row, int column) const {
  const GridColumn& shown = ColumnAt(column);
  if (shown.record == shape_.title) return TitleOf(row);
  const std::string_view cell = table_.Cell(row, shown.record);
  if (shown.shows != GridColumn::Shows::Tempo) return Decode(cell);
  const auto tempo = support::ParseReal(cell);
  return tempo ? QString::number(*tempo, 'f', 1) : Decode(cell);
}

int TrackModel::AlignmentOf(int column) const {
  switch (ColumnAt(column).shows) {
    case GridColumn::Shows::Deck:
      return Qt::AlignCenter;
    case GridColumn::Shows::Number:
    case GridColumn::Shows::Tempo:
      return int(Qt::AlignRight | Qt::AlignVCenter);
    case GridColumn::Shows::Text:
      break;
  }
  return int(Qt::AlignLeft | Qt::AlignVCenter);
}

QVariant TrackModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_ || index.column() >= columnCount()) return {};
  if (role == Qt::TextAlignmentRole) return AlignmentOf(index.column());
  const int row = TableRow(index);
  const int deck = DeckOf(row);
  const bool chip = ColumnAt(index.column()).record == 0;
  switch (role) {
    case Qt::DisplayRole:
      if (!chip) return TextAt(row, index.column());
      return deck == 0 ? QString() : QString::number(deck);
    case Qt::AccessibleTextRole:
      if (!chip) return TextAt(row, index.column());
      return deck == 0 ? QString() : look_.say(Say::OnDeck).arg(deck);
    case Qt::ToolTipRole:
      if (!chip) return TextAt(row, index.column());
      return deck == 0 ? QVariant() : look_.say(Say::OnDeck).arg(deck);
    case Qt::ForegroundRole:
      return deck == 0 ? QVariant() : look_.skin.Deck(deck);
    default:
      return {};
  }
}

QVariant TrackModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  if (role == Qt::DisplayRole) return look_.say(ColumnAt(section).head);
  if (role == Qt::TextAlignmentRole) return AlignmentOf(section);
  return {};
}

Qt::ItemFlags TrackModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const Qt::ItemFlags drag = id_ ? Qt::ItemIsDragEnabled : Qt::NoItemFlags;
  return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren | drag;
}

QStringList TrackModel::mimeTypes() const {
  return {TrackRowsType()};
}

QMimeData* TrackModel::mimeData(const QModelIndexList& indexes) const {
  auto* data = new QMimeData;
  std::set<int> rows;
  for (const QModelIndex& index : indexes) rows.insert(TableRow(index));
  if (id_ && !rows.empty()) PutInto(*data, {*id_, {rows.begin(), rows.end()}});
  return data;
}

}  // namespace ui
