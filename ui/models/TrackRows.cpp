// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/TrackRows.h"

#include <QMimeData>
#include <algorithm>
#include <numeric>

#include "app/Collections.h"
#include "catalogue/RowMoves.h"
#include "support/Text.h"

namespace ui {
namespace {

constexpr const char* kType = "application/x-djtolven-rows";

/// More than any table has; rows come from other programs, too.
constexpr std::size_t kMostRows = std::size_t{1} << 24;

/// One number of the text that rows are dragged as.
std::optional<int> NumberIn(std::string_view text, int least, int most) {
  const auto number = support::ParseInteger(text);
  if (!number || *number < least || *number > most) return std::nullopt;
  return static_cast<int>(*number);
}

/// Adds a row, or rows that follow each other: "7" or "7-12".
bool AddRows(std::string_view text, std::vector<int>& rows) {
  const std::size_t dash = text.find('-');
  const auto first = NumberIn(text.substr(0, dash), 1, INT32_MAX);
  if (!first) return false;
  const auto last =
      dash == std::string_view::npos ? first : NumberIn(text.substr(dash + 1), *first, INT32_MAX);
  if (!last || rows.size() + static_cast<std::size_t>(*last - *first) >= kMostRows) return false;
  const std::size_t before = rows.size();
  rows.resize(before + static_cast<std::size_t>(*last - *first) + 1);
  std::iota(rows.begin() + static_cast<std::ptrdiff_t>(before), rows.end(), *first);
  return true;
}

}  // namespace

QString TrackRowsType() {
  return QLatin1String(kType);
}

void PutInto(QMimeData& data, const TrackRows& rows) {
  QByteArray text = QByteArray::number(static_cast<int>(rows.table));
  for (std::size_t first = 0; first < rows.rows.size();) {
    std::size_t last = first;
    while (last + 1 < rows.rows.size() && rows.rows[last + 1] == rows.rows[last] + 1) ++last;
    text += ' ' + QByteArray::number(rows.rows[first]);
    if (last > first) text += '-' + QByteArray::number(rows.rows[last]);
    first = last + 1;
  }
  data.setData(TrackRowsType(), text);
}

std::optional<TrackRows> TrackRowsIn(const QMimeData& data) {
  const QByteArray text = data.data(TrackRowsType());
  const auto parts = support::Split({text.constData(), std::size_t(text.size())}, ' ');
  const auto table = NumberIn(parts.front(), 0, app::kPlaylists);
  if (!table || parts.size() < 2) return std::nullopt;
  TrackRows rows{static_cast<TableId>(*table), {}};
  for (std::size_t i = 1; i < parts.size(); ++i) {
    if (!AddRows(parts[i], rows.rows)) return std::nullopt;
  }
  return rows;
}

catalogue::track_table& TableOf(app::Collections& collections, TableId table) {
  if (table == TableId::Catalogue) return collections.Music().Table();
  return collections.Playlist(static_cast<int>(table));
}

TableId PlaylistId(int number) {
  return static_cast<TableId>(number);
}

int PutRows(app::Collections& collections, const TrackRows& rows, TableId to, int before, Leaving leaving) {
  catalogue::track_table& target = TableOf(collections, to);
  if (to == TableId::Catalogue) return 0;
  if (rows.table == to) return catalogue::MoveRows(target, rows.rows, before);
  catalogue::track_table& source = TableOf(collections, rows.table);
  const int old_end = target.Rows();
  const int added = catalogue::AppendRows(target, source, rows.rows);
  if (added == 0) return 0;
  if (leaving == Leaving::Go && rows.table != TableId::Catalogue) catalogue::RemoveRows(source, rows.rows);
  if (before > old_end) return old_end + 1;
  std::vector<int> fresh(static_cast<std::size_t>(added));
  std::iota(fresh.begin(), fresh.end(), old_end + 1);
  return catalogue::MoveRows(target, std::move(fresh), before);
}

}  // namespace ui
