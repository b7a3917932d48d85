// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QComboBox>

namespace ui {

/// A list of choices that the wheel does not turn: rolling over the settings moves no output.
class QuietCombo final : public QComboBox {
  Q_OBJECT

 public:
  using QComboBox::QComboBox;

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace ui
