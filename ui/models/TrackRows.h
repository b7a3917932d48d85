// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <vector>

class QMimeData;
class QString;

namespace app {
class Collections;
}
namespace catalogue {
class track_table;
}

namespace ui {

/// The tables whose rows the window shows.
enum class TableId { Catalogue = 0, Playlist1 = 1, Playlist2 = 2, Playlist3 = 3 };

/// Rows of one table (from 1), as they are dragged or chosen.
struct TrackRows {
  TableId table = TableId::Catalogue;
  std::vector<int> rows;  ///< ascending
};

[[nodiscard]] QString TrackRowsType();
void PutInto(QMimeData& data, const TrackRows& rows);
/// Nothing when the data holds no rows, or something that only looks like them.
[[nodiscard]] std::optional<TrackRows> TrackRowsIn(const QMimeData& data);

[[nodiscard]] catalogue::track_table& TableOf(app::Collections& collections, TableId table);
[[nodiscard]] TableId PlaylistId(int number);

/// What a drop does with the rows where they came from. Rows of the catalogue always stay there.
enum class Leaving { Stay, Go };
/// Puts the rows before a row of a playlist (one past the last: at its end) and gives the number of the first
/// one there, 0 when nothing changed. Within one list they move, whatever `leaving` says.
int PutRows(app::Collections& collections, const TrackRows& rows, TableId to, int before, Leaving leaving);

}  // namespace ui
