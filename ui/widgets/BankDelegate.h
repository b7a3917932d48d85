// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

#include "ui/skins/Skin.h"

namespace ui {

/// Paints a step's output as the light it gives.
class BankDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit BankDelegate(const Skin& skin, QObject* parent = nullptr)
      : QStyledItemDelegate(parent), skin_(skin) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const Skin& skin_;
};

}  // namespace ui
