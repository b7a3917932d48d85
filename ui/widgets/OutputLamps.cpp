// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/OutputLamps.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/widgets/Look.h"
#include "ui/widgets/PatternGrid.h"

namespace ui {
namespace {

constexpr double kLedEms = 1.9;
constexpr double kBarEms = 2.2;  ///< least height of the bars

}  // namespace

OutputLamps::OutputLamps(const Skin& skin, QWidget* parent) : QWidget(parent), skin_(skin) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
}

QSize OutputLamps::sizeHint() const {
  return {Em(*this, 20), Em(*this, kLedEms + 2 * kBarEms)};
}

QSize OutputLamps::minimumSizeHint() const {
  return {0, Em(*this, kLedEms + kBarEms)};
}

void OutputLamps::Show(std::vector<Led> leds) {
  if (leds == leds_) return;
  leds_ = std::move(leds);
  update();
}

QRect OutputLamps::CellOf(std::size_t led) const {
  const int count = static_cast<int>(leds_.size());
  const int place = static_cast<int>(led);
  const int left = width() * place / count;
  return {left, 0, width() * (place + 1) / count - left, height()};
}

void OutputLamps::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), skin_.panel);
  const bool bars = std::any_of(leds_.begin(), leds_.end(), [](const Led& led) { return led.level >= 0; });
  const int row = Em(*this, kLedEms);
  for (std::size_t i = 0; i < leds_.size(); ++i) {
    const QRect cell = CellOf(i);
    PaintLed(painter, bars ? QRect(cell.left(), 0, cell.width(), row) : cell, i);
    if (bars) PaintBar(painter, cell.adjusted(0, row + Em(*this, 0.3), 0, 0), leds_[i]);
  }
}

void OutputLamps::PaintLed(QPainter& painter, const QRect& cell, std::size_t led) const {
  const int size = std::min({cell.width() - 2 * Line(*this), cell.height(), 2 * Em(*this, kLedEms)});
  const QRect round(cell.center().x() - size / 2, cell.center().y() - size / 2, size, size);
  const QColor colour = LightColour(skin_, leds_[led].light);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(leds_[led].light > 0 ? colour : skin_.dim, Line(*this)));
  painter.setBrush(colour);
  painter.drawEllipse(QRectF(round).adjusted(1, 1, -1, -1));
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(InkOn(skin_, leds_[led].light));
  painter.drawText(round, Qt::AlignCenter, QString::number(led + 1));
}

void OutputLamps::PaintBar(QPainter& painter, const QRect& cell, const Led& led) const {
  const int wide = std::min(cell.width() * 6 / 10, Em(*this, 2));
  const QRect well(cell.center().x() - wide / 2, cell.top(), wide, cell.height());
  const auto up = [&](float share) {
    return static_cast<int>(std::lround(std::clamp(share, 0.0F, 1.0F) * float(well.height())));
  };
  painter.fillRect(well, skin_.well);
  const int tall = up(led.level);
  const QColor bar = led.light > 0 ? skin_.warm : skin_.good;
  painter.fillRect(well.left(), well.bottom() + 1 - tall, wide, tall, bar);
  if (led.mark < 0) return;
  const int line = 2 * Line(*this);
  const int place =
      std::clamp(well.bottom() + 1 - up(led.mark) - line / 2, well.top(), well.bottom() + 1 - line);
  painter.fillRect(cell.center().x() - wide * 7 / 10, place, wide * 14 / 10, line, skin_.text);
}

}  // namespace ui
