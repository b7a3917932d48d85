// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSlider>

#include "ui/skins/Skin.h"

namespace ui {

/// A knob that turns with the way of the hand, up and down, from wherever it is touched; a double click takes
/// it back to its rest, from where its arc is filled.
class Knob final : public QSlider {
  Q_OBJECT

 public:
  Knob(int lowest, int highest, int rest, const Skin& skin, const QColor& accent, QWidget* parent = nullptr);

  /// Its arc is filled from its lowest value, wherever it rests: it is an amount.
  void FillFromLowest();
  /// What it does is out of force for as long as this holds.
  void SetOut(bool out);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  /// Degrees, clockwise from the bottom left end. The rest lies in the middle where it is neither end.
  [[nodiscard]] double AngleOf(int value) const;

  const int rest_;
  const Skin& skin_;
  QColor accent_;
  bool out_ = false;
  bool amount_ = false;
  int grabbed_at_ = 0;
  int grabbed_value_ = 0;
};

}  // namespace ui
