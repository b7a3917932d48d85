// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>

#include "lightorgan/PatternBank.h"
#include "ui/skins/Skin.h"

namespace ui {

/// Of a lamp that is lit so far, 0 to 1, and of what is written on it.
[[nodiscard]] QColor LightColour(const Skin& skin, float light);
[[nodiscard]] QColor InkOn(const Skin& skin, float light);

/// The rows of a pattern bank that play, the running one marked and kept in sight.
class PatternGrid final : public QWidget {
  Q_OBJECT

 public:
  PatternGrid(lightorgan::Side side, const Skin& skin, QWidget* parent = nullptr);

  /// row: that plays, 0 for none.
  void Show(std::shared_ptr<const lightorgan::StepTable> table, int row);
  [[nodiscard]] int Rows() const;
  [[nodiscard]] int Row() const { return row_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintRow(QPainter& painter, int row, int top, int tall) const;
  [[nodiscard]] float LightAt(int row, int output) const;

  lightorgan::Side side_;
  const Skin& skin_;
  std::shared_ptr<const lightorgan::StepTable> table_;  // with the conductor, which never changes it
  int row_ = 0;
};

}  // namespace ui
