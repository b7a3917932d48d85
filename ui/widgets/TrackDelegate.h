// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

#include "ui/skins/Skin.h"

namespace ui {

class TrackGrid;

/// Room of a cell or a column's head that text takes; both leave the same edges.
[[nodiscard]] QRect TextRoom(const QRect& cell, int alignment, const QFont& font);

/// Paints the cells of a track grid: plainly and quickly, the deck that holds a track as a chip of its
/// colour, the chosen rows with a bar in front where the keys take them.
class TrackDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// The grid owns it.
  TrackDelegate(const Skin& skin, TrackGrid& grid);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  /// A file that is not there is told apart from the decks by more than its colour.
  enum class Chip { Filled, Outlined };
  void PaintChip(QPainter& painter, const QRect& cell, const QFont& font, const QString& text,
                 const QColor& colour, Chip look) const;

  const Skin& skin_;
  const TrackGrid& grid_;
};

}  // namespace ui
