// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/Pad.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/widgets/Look.h"

namespace ui {
namespace {

constexpr double kPadStep = 1.0 / 51;       ///< of an arrow key: five levels
constexpr double kFinePadStep = 1.0 / 255;  ///< with Shift
constexpr double kPadEms = 10;
constexpr double kLowestEms = 6;
constexpr double kHighestEms = 16;

}  // namespace

Pad::Pad(Kind kind, const Skin& skin, QWidget* parent) : QWidget(parent), kind_(kind), skin_(skin) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

QSize Pad::sizeHint() const {
  return {Em(*this, kPadEms), Em(*this, kHighestEms)};
}

QSize Pad::minimumSizeHint() const {
  return {Em(*this, kPadEms), Em(*this, kLowestEms)};
}

QRectF Pad::Field() const {
  const double edge = Em(*this, 0.5);
  return QRectF(rect()).adjusted(edge, edge, -edge, -edge);
}

QColor Pad::ColourAt(const QPointF& place) {
  const double hue = std::clamp(place.x(), 0.0, 0.9999);
  const double saturation = std::clamp(place.y() * 2, 0.0, 1.0);
  const double value = std::clamp(2 - place.y() * 2, 0.0, 1.0);
  return QColor::fromHsvF(static_cast<float>(hue), static_cast<float>(saturation), static_cast<float>(value));
}

void Pad::Show(const QPointF& place) {
  if (place == place_) return;
  place_ = place;
  update();
}

// A grey has no hue and black no saturation: the mark stays where it stood then.
void Pad::ShowColour(const QColor& colour) {
  if (colour.rgb() == Colour().rgb()) return;
  const double hue = colour.hsvHueF() < 0 ? place_.x() : colour.hsvHueF();
  const double value = colour.valueF();
  Show({hue, value < 1 ? 1 - value / 2 : colour.hsvSaturationF() / 2});
}

void Pad::MoveTo(const QPointF& place) {
  Show({std::clamp(place.x(), 0.0, 1.0), std::clamp(place.y(), 0.0, 1.0)});
  Q_EMIT Moved();
}

void Pad::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) mouseMoveEvent(event);
}

void Pad::mouseMoveEvent(QMouseEvent* event) {
  const QRectF field = Field();
  const QPointF inside = event->position() - field.topLeft();
  MoveTo({inside.x() / field.width(), inside.y() / field.height()});
}

void Pad::keyPressEvent(QKeyEvent* event) {
  const double step = event->modifiers().testFlag(Qt::ShiftModifier) ? kFinePadStep : kPadStep;
  switch (event->key()) {
    case Qt::Key_Left:
      return MoveTo(place_ - QPointF(step, 0));
    case Qt::Key_Right:
      return MoveTo(place_ + QPointF(step, 0));
    case Qt::Key_Up:
      return MoveTo(place_ - QPointF(0, step));
    case Qt::Key_Down:
      return MoveTo(place_ + QPointF(0, step));
    default:
      return QWidget::keyPressEvent(event);
  }
}

void Pad::PaintGround(QPainter& painter, const QRectF& field) {
  if (kind_ == Kind::Colour) {
    if (colours_.size() != field.size().toSize()) {
      QImage image(field.size().toSize(), QImage::Format_RGB32);
      for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
          image.setPixelColor(x, y, ColourAt({double(x) / image.width(), double(y) / image.height()}));
      }
      colours_ = QPixmap::fromImage(image);
    }
    return painter.drawPixmap(field.topLeft(), colours_);
  }
  painter.fillRect(field, skin_.well);
  painter.setPen(QPen(skin_.line, Line(*this)));
  for (const double share : {0.25, 0.5, 0.75}) {
    painter.drawLine(field.topLeft() + QPointF(share * field.width(), 0),
                     field.bottomLeft() + QPointF(share * field.width(), 0));
    painter.drawLine(field.topLeft() + QPointF(0, share * field.height()),
                     field.topRight() + QPointF(0, share * field.height()));
  }
}

void Pad::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRectF field = Field();
  PaintGround(painter, field);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  const int line = Line(*this);
  painter.setPen(QPen(hasFocus() ? skin_.text : skin_.line, hasFocus() ? 2 * line : line));
  painter.drawRect(field);
  const QPointF mark = field.topLeft() + QPointF(place_.x() * field.width(), place_.y() * field.height());
  const double radius = Em(*this, 0.45);
  painter.setPen(QPen(Qt::black, 4 * line));
  painter.drawEllipse(mark, radius, radius);
  painter.setPen(QPen(Qt::white, 2 * line));
  painter.setBrush(kind_ == Kind::Colour ? Colour() : skin_.decks[0]);
  painter.drawEllipse(mark, radius, radius);
}

}  // namespace ui
