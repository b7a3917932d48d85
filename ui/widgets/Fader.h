// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSlider>
#include <optional>

#include "ui/skins/Skin.h"

namespace ui {

/// A fader that moves with the pointer from wherever it is touched, so that no touch makes the value jump.
class Fader final : public QSlider {
  Q_OBJECT

 public:
  Fader(Qt::Orientation orientation, const Skin& skin, const QColor& accent, QWidget* parent = nullptr);

  /// A marked value to which a double click returns.
  void SetRest(int value);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] bool Upright() const { return orientation() == Qt::Vertical; }
  /// The smallest value lies at the far end: on top of an upright fader.
  [[nodiscard]] bool Turned() const { return invertedAppearance(); }
  [[nodiscard]] int HandleLength() const;
  [[nodiscard]] int Travel() const;
  /// Centre of the handle at a value, along the fader.
  [[nodiscard]] int PlaceOf(int value) const;
  [[nodiscard]] QRect Along(int from, int to, int thickness) const;
  void PaintHandle(QPainter& painter) const;

  const Skin& skin_;
  QColor accent_;
  std::optional<int> rest_;
  int grabbed_at_ = 0;
  int grabbed_value_ = 0;
};

}  // namespace ui
