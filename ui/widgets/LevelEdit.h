// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>

namespace ui {

/// A field for a level: it takes backspace and the keys from "," to "9" but for "-" and "/", and drops every
/// other one.
class LevelEdit final : public QLineEdit {
  Q_OBJECT

 public:
  explicit LevelEdit(QWidget* parent = nullptr);

  /// The digits that it begins with; 0 without any.
  [[nodiscard]] int Level() const;
  void SetLevel(int level) { setText(QString::number(level)); }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

}  // namespace ui
