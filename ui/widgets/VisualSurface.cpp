// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/VisualSurface.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <utility>

#include "ui/widgets/Look.h"

namespace ui {
namespace {

using Kind = app::Picture::Kind;

constexpr float kFallSpeed = 1.5F;  ///< heights a second

}  // namespace

VisualSurface::VisualSurface(const Skin& skin, QWidget* parent)
    : QWidget(parent), skin_(skin), colour_(skin.dim) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize VisualSurface::sizeHint() const {
  return {Em(*this, 24), Em(*this, 2)};
}

QSize VisualSurface::minimumSizeHint() const {
  return {Em(*this, 6), Em(*this, 2)};
}

void VisualSurface::Show(app::Picture picture, const QColor& colour, support::TimePoint now) {
  const bool same = picture.kind == picture_.kind && picture.values.size() == picture_.values.size();
  if (same && picture.kind == Kind::Bars) {
    const float fall = kFallSpeed * std::chrono::duration<float>(now - shown_at_).count();
    for (std::size_t i = 0; i < picture.values.size(); ++i) {
      picture.values[i] = std::max(picture.values[i], picture_.values[i] - fall);
    }
  }
  shown_at_ = now;
  if (same && colour == colour_ && picture.values == picture_.values) return;
  picture_ = std::move(picture);
  colour_ = colour;
  update();
}

void VisualSurface::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), skin_.well);
  if (picture_.kind == Kind::Bars) PaintBars(painter);
  if (picture_.kind == Kind::Line) PaintLine(painter);
}

void VisualSurface::PaintBars(QPainter& painter) const {
  const int bars = static_cast<int>(picture_.values.size());
  for (int bar = 0; bar < bars; ++bar) {
    const int left = width() * bar / bars;
    const int right = width() * (bar + 1) / bars;
    const int gap = std::max(1, (right - left) / 6);
    const auto tall = static_cast<int>(picture_.values[static_cast<std::size_t>(bar)] * float(height()));
    painter.fillRect(left, height() - 1, right - left - gap, 1, skin_.line);
    painter.fillRect(left, height() - tall, right - left - gap, tall, colour_);
  }
}

void VisualSurface::PaintLine(QPainter& painter) const {
  const auto points = static_cast<qsizetype>(picture_.values.size());
  const double middle = height() / 2.0;
  QPolygonF line(points);
  for (qsizetype i = 0; i < points; ++i) {
    const double value = double(picture_.values[static_cast<std::size_t>(i)]);
    line[i] = {double(i) * width() / double(std::max<qsizetype>(1, points - 1)), middle * (1 - value)};
  }
  painter.setPen(QPen(colour_, std::max(1.0, Em(*this, 0.1) * 1.0)));
  painter.drawPolyline(line);
}

}  // namespace ui
