// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/CatalogueModel.h"

#include <QMimeData>

#include "support/Text.h"
#include "ui/models/TrackText.h"
#include "ui/strings/Decode.h"

namespace ui {
namespace {

constexpr const char* kRowType = "application/x-djtolven-row";

/// Column of the track record for each column of the grid.
constexpr int kRecordColumns[] = {0,
                                  catalogue::track::kArtist,
                                  catalogue::track::kTitle,
                                  catalogue::track::kTime,
                                  catalogue::track::kBpm,
                                  catalogue::track::kGenre,
                                  catalogue::track::kAlbum,
                                  catalogue::track::kYear};
constexpr Say kHeads[] = {Say::ColumnDeck, Say::ColumnArtist, Say::ColumnTitle, Say::ColumnTime,
                          Say::ColumnBpm,  Say::ColumnGenre,  Say::ColumnAlbum, Say::ColumnYear};

bool IsNumber(int column) {
  return column == CatalogueModel::Time || column == CatalogueModel::Bpm || column == CatalogueModel::Year;
}

}  // namespace

CatalogueModel::CatalogueModel(const catalogue::track_table& table, const Look& look, QObject* parent)
    : QAbstractTableModel(parent), table_(table), look_(look), rows_(table.Rows()) {}

void CatalogueModel::Sync() {
  const int rows = table_.Rows();
  if (rows == rows_) return;
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
    return;
  }
  beginResetModel();
  rows_ = rows;
  endResetModel();
}

void CatalogueModel::ShowDecks(const app::WorkstationView& view) {
  if (on_decks_[0] == view.decks[0].filename && on_decks_[1] == view.decks[1].filename) return;
  on_decks_ = {view.decks[0].filename, view.decks[1].filename};
  if (rows_ > 0) Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, kColumns - 1));
}

std::optional<int> CatalogueModel::RowIn(const QMimeData& data) {
  const QByteArray text = data.data(QLatin1String(kRowType));
  const auto row = support::ParseInteger(std::string_view(text.constData(), std::size_t(text.size())));
  if (!row || *row < 1 || *row > INT32_MAX) return std::nullopt;
  return static_cast<int>(*row);
}

int CatalogueModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int CatalogueModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

int CatalogueModel::DeckOf(int row) const {
  const std::string_view filename = table_.Cell(row, catalogue::track::kFilename);
  if (filename.empty()) return 0;
  if (filename == on_decks_[0]) return 1;
  return filename == on_decks_[1] ? 2 : 0;
}

QString CatalogueModel::TextAt(int row, int column) const {
  const std::string_view cell = table_.Cell(row, kRecordColumns[column]);
  if (column == Title) return TitleText(cell, table_.Cell(row, catalogue::track::kFilename));
  return Decode(cell);
}

QVariant CatalogueModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_ || index.column() >= kColumns) return {};
  const int row = TableRow(index);
  const int deck = role == Qt::TextAlignmentRole ? 0 : DeckOf(row);
  switch (role) {
    case Qt::DisplayRole:
      if (index.column() != Deck) return TextAt(row, index.column());
      return deck == 0 ? QString() : QString::number(deck);
    case Qt::AccessibleTextRole:
      if (index.column() != Deck) return TextAt(row, index.column());
      return deck == 0 ? QString() : look_.say(Say::OnDeck).arg(deck);
    case Qt::ToolTipRole:
      if (index.column() != Deck) return TextAt(row, index.column());
      return deck == 0 ? QVariant() : look_.say(Say::OnDeck).arg(deck);
    case Qt::ForegroundRole:
      return deck == 0 ? QVariant() : look_.skin.Deck(deck);
    case Qt::TextAlignmentRole:
      if (index.column() == Deck) return int(Qt::AlignCenter);
      return int((IsNumber(index.column()) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
      return {};
  }
}

QVariant CatalogueModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= kColumns) return {};
  if (role == Qt::DisplayRole) return look_.say(kHeads[section]);
  if (role != Qt::TextAlignmentRole) return {};
  if (section == Deck) return int(Qt::AlignCenter);
  return int((IsNumber(section) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

Qt::ItemFlags CatalogueModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
}

QStringList CatalogueModel::mimeTypes() const {
  return {QLatin1String(kRowType)};
}

QMimeData* CatalogueModel::mimeData(const QModelIndexList& indexes) const {
  auto* data = new QMimeData;
  if (!indexes.isEmpty())
    data->setData(QLatin1String(kRowType), QByteArray::number(TableRow(indexes.first())));
  return data;
}

}  // namespace ui
