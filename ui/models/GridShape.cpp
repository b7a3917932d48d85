// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/GridShape.h"

#include <vector>

#include "catalogue/track_table.h"

namespace ui {
namespace {

namespace track = catalogue::track;
namespace songs = catalogue::karaoke;
using Shows = GridColumn::Shows;

constexpr GridColumn kCatalogueGrid[] = {{0, Say::ColumnDeck, Shows::Deck, 4.4},
                                         {track::kArtist, Say::ColumnArtist, Shows::Text, 9, 30},
                                         {track::kTitle, Say::ColumnTitle, Shows::Text, 10, 34},
                                         {track::kTime, Say::ColumnTime, Shows::Time, 5},
                                         {track::kBpm, Say::ColumnBpm, Shows::Tempo, 4.6},
                                         {track::kGenre, Say::ColumnGenre, Shows::Text, 7, 14, 1},
                                         {track::kAlbum, Say::ColumnAlbum, Shows::Text, 9, 22, 3},
                                         {track::kYear, Say::ColumnYear, Shows::Number, 4.5, 0, 2}};

constexpr GridColumn kKaraokeGrid[] = {{songs::kArtist, Say::ColumnArtist, Shows::Text, 9, 30},
                                       {songs::kTitle, Say::ColumnTitle, Shows::Text, 10, 34},
                                       {songs::kOrigin, Say::ColumnOrigin, Shows::Text, 7, 14, 2},
                                       {songs::kGenre, Say::ColumnGenre, Shows::Text, 7, 14, 1},
                                       {songs::kTime, Say::ColumnTime, Shows::Time, 5}};

Say HeadOf(int record) {
  if (record == track::kArtist) return Say::ColumnArtist;
  if (record == track::kTitle) return Say::ColumnTitle;
  return record == track::kTime ? Say::ColumnTime : Say::ColumnBpm;
}

Shows KindOf(int record) {
  if (record == track::kTime) return Shows::Time;
  return record == track::kBpm ? Shows::Tempo : Shows::Text;
}

std::vector<GridColumn> VisibleColumns() {
  std::vector<GridColumn> grid;
  const auto columns = catalogue::TrackColumns();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!columns[i].visible) continue;
    const int record = static_cast<int>(i) + 1;
    const double share = KindOf(record) == Shows::Text ? 1 : 0;
    grid.push_back({record, HeadOf(record), KindOf(record), EmsOfPixels(columns[i].width), share});
  }
  return grid;
}

}  // namespace

double EmsOfPixels(int pixels) {
  constexpr double kPixelsAnEm = 10.0 * 96 / 72;
  return pixels / kPixelsAnEm;
}

const GridShape& CatalogueShape() {
  static const GridShape shape{kCatalogueGrid, track::kArtist, track::kTitle, track::kFilename};
  return shape;
}

const GridShape& PlaylistShape() {
  static const std::vector<GridColumn> columns = VisibleColumns();
  static const GridShape shape{columns, track::kArtist, track::kTitle, track::kFilename};
  return shape;
}

const GridShape& KaraokeShape() {
  static const GridShape shape{kKaraokeGrid, songs::kArtist, songs::kTitle, songs::kFilename};
  return shape;
}

}  // namespace ui
