// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/TrackModel.h"

#include <QMimeData>
#include <algorithm>
#include <set>
#include <utility>

#include "app/WorkstationView.h"
#include "support/Text.h"
#include "ui/models/TrackText.h"
#include "ui/strings/Decode.h"
#include "ui/strings/ListWords.h"
#include "ui/strings/ScanWords.h"

namespace ui {

TrackModel::TrackModel(const catalogue::track_table& table, std::optional<TableId> id, const GridShape& shape,
                       const Look& look, QObject* parent)
    : QAbstractTableModel(parent),
      table_(table),
      id_(id),
      shape_(shape),
      look_(look),
      seen_(table),
      table_rows_(table.Rows()),
      rows_(table.Rows()) {}

void TrackModel::Sync() {
  const int rows = table_.Rows();
  if (!table_.IsCopyOf(seen_)) {
    seen_ = table_;
    Repaint();  // of the rows in sight: the grid asks for no others
  }
  if (rows == table_rows_) return;
  if (rows < table_rows_) return Reload();
  table_rows_ = rows;
  if (order_ != nullptr) return;  // the search shows them
  beginInsertRows({}, rows_, rows - 1);
  rows_ = rows;
  endInsertRows();
}

void TrackModel::Reload() {
  beginResetModel();
  table_rows_ = table_.Rows();
  DropMissingRows();
  rows_ = PlacesNow();
  endResetModel();
}

void TrackModel::ShowRows(app::TableSearch::Rows rows) {
  beginResetModel();
  order_ = std::move(rows);
  table_rows_ = table_.Rows();
  DropMissingRows();
  rows_ = PlacesNow();
  endResetModel();
}

int TrackModel::PlacesNow() const {
  return order_ == nullptr ? table_.Rows() : static_cast<int>(order_->size());
}

void TrackModel::DropMissingRows() {
  if (order_ == nullptr) return;
  const auto missing = [last = table_.Rows()](int row) { return row > last; };
  if (std::none_of(order_->begin(), order_->end(), missing)) return;
  std::vector<int> there = *order_;
  std::erase_if(there, missing);
  order_ = std::make_shared<const std::vector<int>>(std::move(there));
}

int TrackModel::PlaceOf(int table_row) const {
  if (order_ == nullptr) return table_row >= 1 && table_row <= rows_ ? table_row - 1 : -1;
  const auto found = std::find(order_->begin(), order_->end(), table_row);
  return found == order_->end() ? -1 : static_cast<int>(found - order_->begin());
}

std::vector<int> TrackModel::PlacesOf(const std::vector<int>& table_rows) const {
  std::vector<bool> wanted(static_cast<std::size_t>(table_.Rows()) + 1);
  for (const int row : table_rows) {
    if (row >= 1 && row <= table_.Rows()) wanted[static_cast<std::size_t>(row)] = true;
  }
  std::vector<int> places;
  for (int place = 0; place < rows_; ++place) {
    const auto row = static_cast<std::size_t>(TableRowAt(place));
    if (row < wanted.size() && wanted[row]) places.push_back(place);
  }
  return places;
}

void TrackModel::ShowPlayed(std::size_t count) {
  if (std::exchange(played_, count) != count) Repaint();
}

void TrackModel::ShowMissing(std::size_t checks) {
  if (std::exchange(missing_checks_, checks) != checks) Repaint();
}

void TrackModel::ShowSort(const catalogue::SortWish& sort) {
  if (sort == sort_) return;
  sort_ = sort;
  Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void TrackModel::ShowDecks(const app::WorkstationView& view) {
  // A deck that could not open a file still names it.
  const auto on = [](const app::DeckView& deck) {
    return deck.state == app::DeckView::State::Empty ? std::string_view() : std::string_view(deck.filename);
  };
  const std::string_view first = on(view.decks[0]), second = on(view.decks[1]);
  if (on_decks_[0] == first && on_decks_[1] == second) return;
  on_decks_ = {std::string(first), std::string(second)};
  Repaint();
}

void TrackModel::Repaint() {
  if (rows_ > 0) Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
}

bool TrackModel::Played(int row) const {
  return was_played_ && was_played_(table_.Cell(row, shape_.filename));
}

bool TrackModel::Missing(int row) const {
  return is_missing_ && is_missing_(table_.Cell(row, shape_.filename));
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
  if (LacksAnalysis(row, shown)) return QStringLiteral("?");
  const auto tempo = support::ParseReal(cell);
  return tempo ? QString::number(*tempo, 'f', 1) : Decode(cell);
}

bool TrackModel::LacksAnalysis(int row, const GridColumn& column) const {
  return column.shows == GridColumn::Shows::Tempo && !WasAnalysed(table_, row);
}

int TrackModel::AlignmentOf(int column) const {
  switch (ColumnAt(column).shows) {
    case GridColumn::Shows::Deck:
      return Qt::AlignCenter;
    case GridColumn::Shows::Number:
    case GridColumn::Shows::Time:
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
  const GridColumn& column = ColumnAt(index.column());
  if (column.record == 0 && role != Qt::ForegroundRole) return ChipOf(row, role);
  const int deck = DeckOf(row);
  switch (role) {
    case kMarkRole:
      if (index.column() != 0) return QString();
      return Missing(row) ? QStringLiteral("!") : deck == 0 && Played(row) ? QStringLiteral("✓") : QString();
    case Qt::DisplayRole:
      return TextAt(row, index.column());
    case Qt::ToolTipRole:
      return LacksAnalysis(row, column) ? look_.say.Tip(ScanWord::NotAnalysed) : TextAt(row, index.column());
    case Qt::AccessibleTextRole: {
      const QString text = TextAt(row, index.column());
      if (LacksAnalysis(row, column)) return look_.say(ScanWord::NotAnalysed);
      if (column.record != shape_.title) return text;
      if (Missing(row)) return look_.say(ListWord::Missing).arg(text);
      return Played(row) ? look_.say(ListWord::Played).arg(text) : text;
    }
    case Qt::ForegroundRole:
      if (deck != 0) return look_.skin.Deck(deck);
      if (Missing(row)) return column.record == 0 ? look_.skin.warning : look_.skin.dim;
      if (LacksAnalysis(row, column)) return look_.skin.dim;
      return Played(row) ? QVariant(look_.skin.dim) : QVariant();
    default:
      return {};
  }
}

/// Of the deck that holds the row's file, else of one that is not there or was played.
QVariant TrackModel::ChipOf(int row, int role) const {
  const int deck = DeckOf(row);
  if (deck == 0 && Missing(row)) {
    if (role == Qt::DisplayRole || role == kMarkRole) return QStringLiteral("!");
    const bool told = role == Qt::AccessibleTextRole || role == Qt::ToolTipRole;
    return told ? QVariant(look_.say(ListWord::Missing).arg(TitleOf(row))) : QVariant();
  }
  const bool played = deck == 0 && Played(row);
  if (deck == 0 && !played) return role == Qt::ToolTipRole ? QVariant() : QVariant(QString());
  if (role == Qt::DisplayRole) return played ? QStringLiteral("✓") : QString::number(deck);
  if (role != Qt::AccessibleTextRole && role != Qt::ToolTipRole) return {};
  return played ? look_.say(ListWord::Played).arg(TitleOf(row)) : look_.say(Say::OnDeck).arg(deck);
}

QVariant TrackModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const GridColumn& column = ColumnAt(section);
  const bool sorted = column.record != 0 && column.record == sort_.column;
  const bool up = sort_.direction == catalogue::SortDirection::Up;
  if (role == Qt::DisplayRole) return look_.say(column.head);
  if (role == Qt::TextAlignmentRole) return AlignmentOf(section);
  if (role == kSortRole) return sorted ? (up ? 1 : -1) : 0;
  if (role != Qt::AccessibleTextRole) return {};
  const QString head = look_.say(column.head);
  return sorted ? look_.say(up ? ListWord::SortedUp : ListWord::SortedDown).arg(head) : head;
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
  std::set<int> rows;
  for (const QModelIndex& index : indexes) rows.insert(TableRow(index));
  return DataOf({rows.begin(), rows.end()});
}

QMimeData* TrackModel::DataOf(std::vector<int> rows) const {
  auto* data = new QMimeData;
  if (id_ && !rows.empty()) PutInto(*data, {*id_, std::move(rows)});
  return data;
}

}  // namespace ui
