// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QWidget>

#include "ui/skins/Skin.h"

namespace ui {

/// A field in which two values are moved at once: a direction, or a colour.
class Pad final : public QWidget {
  Q_OBJECT

 public:
  /// Direction: pan from the left, tilt from the top. Colour: hue from the left, from white over the full
  /// colour down to black.
  enum class Kind { Direction, Colour };

  Pad(Kind kind, const Skin& skin, QWidget* parent = nullptr);

  /// Both from 0 to 1. Moves the mark, and tells nobody.
  void Show(const QPointF& place);
  void ShowColour(const QColor& colour);
  [[nodiscard]] const QPointF& Place() const { return place_; }
  [[nodiscard]] QColor Colour() const { return ColourAt(place_); }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void Moved();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] static QColor ColourAt(const QPointF& place);
  [[nodiscard]] QRectF Field() const;
  void MoveTo(const QPointF& place);
  void PaintGround(QPainter& painter, const QRectF& field);

  Kind kind_;
  const Skin& skin_;
  QPointF place_{0.5, 0.5};
  QPixmap colours_;
};

}  // namespace ui
