// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "ui/widgets/Look.h"

namespace ui {

/// Colours to choose from with a finger: one touch chooses and closes. Not modal.
class ColourChooser final : public QDialog {
  Q_OBJECT

 public:
  ColourChooser(const QColor& present, const Look& look, QWidget* parent);

 Q_SIGNALS:
  void Chosen(const QColor& colour);
};

}  // namespace ui
