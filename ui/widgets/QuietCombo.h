// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QComboBox>

#include "ui/skins/Skin.h"

namespace ui {

/// A list of choices that the wheel does not turn: rolling over the settings moves no output.
class QuietCombo final : public QComboBox {
  Q_OBJECT

 public:
  explicit QuietCombo(const Skin& skin, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  [[nodiscard]] int Height() const;

  const Skin& skin_;
};

}  // namespace ui
