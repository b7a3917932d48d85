// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/Knob.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "ui/widgets/Look.h"

namespace ui {
namespace {

constexpr double kTurn = 270;      // degrees from one end to the other
constexpr double kFirst = 225;     // degrees, as QPainter counts, of the lowest value
constexpr double kTravelEms = 10;  // way of the hand from one end to the other

}  // namespace

Knob::Knob(int lowest, int highest, int rest, const Skin& skin, const QColor& accent, QWidget* parent)
    : QSlider(Qt::Vertical, parent), rest_(rest), skin_(skin), accent_(accent) {
  setRange(lowest, highest);
  setValue(rest);
  setPageStep(std::max(1, (highest - lowest) / 10));
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Knob::FillFromLowest() {
  amount_ = true;
  update();
}

void Knob::SetOut(bool out) {
  if (out_ == out) return;
  out_ = out;
  update();
}

QSize Knob::sizeHint() const {
  const int side = std::max(36, Em(*this, 2.7));
  return {side, side};
}

double Knob::AngleOf(int value) const {
  const auto share = [&](int from, int to) { return double(value - from) / std::max(1, to - from); };
  if (amount_ || rest_ == minimum() || rest_ == maximum()) return kTurn * share(minimum(), maximum());
  return value < rest_ ? kTurn / 2 * share(minimum(), rest_) : kTurn / 2 * (1 + share(rest_, maximum()));
}

void Knob::paintEvent(QPaintEvent*) {
  constexpr int kSixteenths = 16;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const int line = Line(*this);
  const double thick = std::max(3.0, double(Em(*this, 0.3)));
  const double side = std::min(width(), height()) - thick - 2 * line;
  const QRectF ring((width() - side) / 2, (height() - side) / 2, side, side);
  const auto arc = [&](const QColor& colour, double wide, double from, double to) {
    painter.setPen(QPen(colour, wide, Qt::SolidLine, Qt::FlatCap));
    painter.drawArc(ring, int(std::lround((kFirst - from) * kSixteenths)),
                    int(std::lround((from - to) * kSixteenths)));
  };
  const bool live = isEnabled() && !out_;
  const double here = AngleOf(value());
  arc(skin_.line, thick + 2 * line, 0, kTurn);
  arc(skin_.well, thick, 0, kTurn);
  arc(live ? accent_ : skin_.faint, thick, amount_ ? 0 : AngleOf(rest_), here);
  const QRectF cap = ring.adjusted(thick, thick, -thick, -thick);
  painter.setPen(QPen(hasFocus() ? skin_.text : skin_.line, (hasFocus() ? 2 : 1) * line));
  painter.setBrush(isEnabled() ? skin_.raised.lighter(isSliderDown() ? 150 : 125) : skin_.panel);
  painter.drawEllipse(cap);
  const double way = (kFirst - here) * std::numbers::pi / 180;
  const QPointF out(std::cos(way), -std::sin(way));
  painter.setPen(QPen(live ? skin_.text : skin_.faint, 2 * line, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(cap.center() + out * cap.width() * 0.12, cap.center() + out * cap.width() * 0.42);
}

void Knob::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  grabbed_at_ = event->position().toPoint().y();
  grabbed_value_ = value();
  setSliderDown(true);
  update();
}

void Knob::mouseMoveEvent(QMouseEvent* event) {
  if (!isSliderDown()) return event->ignore();
  const double share = double(grabbed_at_ - event->position().toPoint().y()) / Em(*this, kTravelEms);
  setValue(grabbed_value_ + static_cast<int>(std::lround(share * (maximum() - minimum()))));
}

void Knob::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  setSliderDown(false);
  update();
}

void Knob::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
  if (event->button() != Qt::LeftButton) return;
  setValue(rest_);
  grabbed_value_ = value();
}

}  // namespace ui
