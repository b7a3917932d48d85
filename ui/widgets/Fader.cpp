// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/Fader.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/widgets/Look.h"
#include "ui/widgets/Rim.h"

namespace ui {

Fader::Fader(Qt::Orientation orientation, const Skin& skin, const QColor& accent, QWidget* parent)
    : QSlider(orientation, parent), skin_(skin), accent_(accent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::StrongFocus);
  if (Upright()) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  } else {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  }
}

void Fader::SetRest(int value) {
  rest_ = value;
  update();
}

QSize Fader::sizeHint() const {
  const int across = std::max(36, Em(*this, 3.0));
  const int along = Em(*this, 10);
  return Upright() ? QSize(across, along) : QSize(along, across);
}

QSize Fader::minimumSizeHint() const {
  const QSize hint = sizeHint();
  return Upright() ? QSize(hint.width(), Em(*this, 6)) : QSize(Em(*this, 6), hint.height());
}

int Fader::HandleLength() const {
  return Em(*this, 1.6);
}

int Fader::Travel() const {
  return std::max(1, (Upright() ? height() : width()) - HandleLength() - 4);
}

int Fader::PlaceOf(int value) const {
  const int range = std::max(1, maximum() - minimum());
  const int way = static_cast<int>(std::lround(double(value - minimum()) / range * Travel()));
  const int start = HandleLength() / 2 + 2;
  const bool from_below = Upright() != Turned();
  return from_below ? (Upright() ? height() : width()) - start - way : start + way;
}

QRect Fader::Along(int from, int to, int thickness) const {
  const int low = std::min(from, to);
  const int length = std::max(1, std::abs(to - from));
  if (Upright()) return {(width() - thickness) / 2, low, thickness, length};
  return {low, (height() - thickness) / 2, length, thickness};
}

void Fader::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), skin_.panel);
  const int groove = std::max(4, Em(*this, 0.35));
  const int across = Upright() ? width() : height();
  const int line = Line(*this);
  for (int mark = 0; mark <= 10; ++mark) {
    const int place = PlaceOf(minimum() + (maximum() - minimum()) * mark / 10);
    painter.fillRect(Along(place - line / 2, place - line / 2 + line, across * (mark % 5 == 0 ? 7 : 5) / 10),
                     skin_.line);
  }
  painter.fillRect(Along(PlaceOf(minimum()), PlaceOf(maximum()), groove + 2 * line), skin_.line);
  painter.fillRect(Along(PlaceOf(minimum()), PlaceOf(maximum()), groove), skin_.well);
  if (isEnabled()) {
    const int from = PlaceOf(rest_.value_or(Turned() ? maximum() : minimum()));
    FillRimmed(painter, Along(from, PlaceOf(value()), groove), accent_, skin_.well, skin_.dim, line);
  }
  if (rest_) {
    const int place = PlaceOf(*rest_);
    painter.fillRect(Along(place - line, place + line, across * 9 / 10), skin_.dim);
  }
  PaintHandle(painter);
}

void Fader::PaintHandle(QPainter& painter) const {
  const int half = HandleLength() / 2;
  const int across = (Upright() ? width() : height()) * 8 / 10;
  const int place = PlaceOf(value());
  QRect handle = Along(place - half, place + half, across);
  painter.setRenderHint(QPainter::Antialiasing);
  const int line = Line(*this);
  painter.setPen(QPen(hasFocus() ? skin_.text : skin_.ground, hasFocus() ? 2 * line : line));
  painter.setBrush(isEnabled() ? skin_.raised.lighter(isSliderDown() ? 150 : 125) : skin_.panel);
  painter.drawRoundedRect(QRectF(handle).adjusted(1, 1, -1, -1), 3 * line, 3 * line);
  painter.setRenderHint(QPainter::Antialiasing, false);
  const QRect middle = Along(place - line, place + line, across - 6 * line);
  if (!isEnabled()) return painter.fillRect(middle, skin_.faint);
  FillRimmed(painter, middle, accent_, skin_.raised.lighter(125), skin_.dim, line);
}

void Fader::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  grabbed_at_ = Upright() ? event->position().toPoint().y() : event->position().toPoint().x();
  grabbed_value_ = value();
  setSliderDown(true);
  update();
}

void Fader::mouseMoveEvent(QMouseEvent* event) {
  if (!isSliderDown()) return event->ignore();
  const QPoint point = event->position().toPoint();
  const int way = Upright() ? grabbed_at_ - point.y() : point.x() - grabbed_at_;
  const double share = double(Turned() ? -way : way) / Travel();
  setValue(grabbed_value_ + static_cast<int>(std::lround(share * (maximum() - minimum()))));
}

void Fader::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  setSliderDown(false);
  update();
}

void Fader::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
  if (event->button() != Qt::LeftButton || !rest_) return;
  setValue(*rest_);
  grabbed_value_ = value();
}

}  // namespace ui
