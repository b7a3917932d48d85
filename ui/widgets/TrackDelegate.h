// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

#include "ui/skins/Skin.h"

namespace ui {

/// Paints the cells of a track grid: plainly and quickly, the deck that holds a track as a chip of its
/// colour, the chosen row with a bar in front.
class TrackDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  TrackDelegate(const Skin& skin, QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  void PaintChip(QPainter& painter, const QStyleOptionViewItem& option, const QString& text,
                 const QColor& colour) const;

  const Skin& skin_;
};

}  // namespace ui
