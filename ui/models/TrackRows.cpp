// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/TrackRows.h"

#include <QMimeData>
#include <algorithm>
#include <numeric>

#include "catalogue/RowMoves.h"
#include "support/Text.h"

namespace ui {
namespace {

constexpr const char* kType = "application/x-djtolven-rows";

/// One number of the text that rows are dragged as.
std::optional<int> NumberIn(std::string_view text, int least, int most) {
  const auto number = support::ParseInteger(text);
  if (!number || *number < least || *number > most) return std::nullopt;
  return static_cast<int>(*number);
}

}  // namespace

QString TrackRowsType() {
  return QLatin1String(kType);
}

void PutInto(QMimeData& data, const TrackRows& rows) {
  QByteArray text = QByteArray::number(static_cast<int>(rows.table));
  for (const int row : rows.rows) text += ' ' + QByteArray::number(row);
  data.setData(TrackRowsType(), text);
}

std::optional<TrackRows> TrackRowsIn(const QMimeData& data) {
  const QByteArray text = data.data(TrackRowsType());
  const auto parts = support::Split({text.constData(), std::size_t(text.size())}, ' ');
  const auto table = NumberIn(parts.front(), 0, app::kPlaylists);
  if (!table || parts.size() < 2) return std::nullopt;
  TrackRows rows{static_cast<TableId>(*table), {}};
  for (std::size_t i = 1; i < parts.size(); ++i) {
    const auto row = NumberIn(parts[i], 1, INT32_MAX);
    if (!row) return std::nullopt;
    rows.rows.push_back(*row);
  }
  return rows;
}

catalogue::track_table& TableOf(app::Workstation& workstation, TableId table) {
  if (table == TableId::Catalogue) return workstation.Catalogue();
  return workstation.Playlist(static_cast<int>(table));
}

TableId PlaylistId(int number) {
  return static_cast<TableId>(number);
}

int PutRows(app::Workstation& workstation, const TrackRows& rows, TableId to, int before, Leaving leaving) {
  catalogue::track_table& target = TableOf(workstation, to);
  if (to == TableId::Catalogue) return 0;
  if (rows.table == to) return catalogue::MoveRows(target, rows.rows, before);
  catalogue::track_table& source = TableOf(workstation, rows.table);
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
