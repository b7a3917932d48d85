// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// One column of a grid on the screen.
struct GridColumn {
  enum class Shows { Text, Number, Tempo, Time, Deck };

  int record;  ///< column of the table, from 1; 0 for the deck that holds the row's file
  Say head;
  Shows shows;
  double width;      ///< in ems; the least where it has a share
  double share = 0;  ///< of the room that the widths leave
  int leaves = 0;    ///< where the room is too small the highest goes first; 0 stays
};

/// What a grid shows of its table.
struct GridShape {
  std::span<const GridColumn> columns;
  int artist;  ///< columns of the table
  int title;
  int filename;
};

[[nodiscard]] const GridShape& CatalogueShape();
/// The visible columns of the track record in their given widths.
[[nodiscard]] const GridShape& PlaylistShape();
[[nodiscard]] const GridShape& KaraokeShape();

/// Ems of a width in pixels at 96 dpi in type of 10 points, the size of which the described widths are meant.
[[nodiscard]] double EmsOfPixels(int pixels);

}  // namespace ui
