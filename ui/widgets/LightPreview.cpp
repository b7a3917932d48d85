// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/LightPreview.h"

#include <QMouseEvent>
#include <QPainter>

#include "ui/widgets/Look.h"

namespace ui {
namespace {

constexpr double kFloorEms = 1.6;
constexpr double kStripEms = 5;
constexpr QRgb kNight = 0xff05070a;  ///< a stage is dark in every skin

/// Lights that fall over each other add up to the brighter of both.
class PaintedSurface final : public dmx::Surface {
 public:
  explicit PaintedSurface(QPainter& painter) : painter_(painter) {
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setCompositionMode(QPainter::CompositionMode_Lighten);
    painter_.setPen(Qt::NoPen);
  }
  void FillDisc(double x, double y, double radius, dmx::LightColour colour) override {
    painter_.setBrush(QColor(colour.red, colour.green, colour.blue));
    painter_.drawEllipse(QPointF(x, y), radius, radius);
  }

 private:
  QPainter& painter_;
};

bool LookSame(const dmx::cLight& a, const dmx::cLight& b) {
  return a.X == b.X && a.Y == b.Y && a.Red == b.Red && a.Green == b.Green && a.Blue == b.Blue &&
         a.Radius == b.Radius;
}

bool LookSame(const dmx::cLights& a, const dmx::cLights& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const dmx::cLight& x, const dmx::cLight& y) { return LookSame(x, y); });
}

}  // namespace

LightPreview::LightPreview(const Skin& skin, Height height, QWidget* parent)
    : QWidget(parent), skin_(skin), height_(height) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize LightPreview::sizeHint() const {
  return {Em(*this, 40), Em(*this, height_ == Height::Stage ? 11 : kStripEms)};
}

QSize LightPreview::minimumSizeHint() const {
  return {Em(*this, 20), Em(*this, height_ == Height::Stage ? 8 : kStripEms)};
}

double LightPreview::FloorHeight() const {
  return Em(*this, kFloorEms);
}

void LightPreview::Show(const dmx::DMXname& fixtures,
                        std::span<const dmx::DmxLevel, dmx::kUniverseChannels> levels) {
  dmx::cLights lights = dmx::PreviewLights(fixtures, levels, width(), height() - FloorHeight());
  if (LookSame(lights, lights_)) return;
  lights_ = std::move(lights);
  update();
}

void LightPreview::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), QColor(kNight));
  PaintedSurface surface(painter);
  for (const dmx::cLight& light : lights_) light.DrawLight(surface);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  const double part = double(width()) / std::max(lights_.count(), 1);
  const auto floor = QRectF(0, height() - FloorHeight(), width(), FloorHeight());
  painter.fillRect(floor, skin_.panel);
  painter.setPen(skin_.dim);
  for (const dmx::cLight& light : lights_)
    painter.drawText(QRectF(part * (light.Target - 1), floor.y(), part, floor.height()), Qt::AlignCenter,
                     QString::number(light.Target));
}

int LightPreview::FixtureAt(const QPoint& place) const {
  if (lights_.count() == 0) return 0;
  const double part = double(width()) / lights_.count();
  return std::clamp(static_cast<int>(place.x() / part) + 1, 1, lights_.count());
}

void LightPreview::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || lights_.count() == 0) return event->ignore();
  Q_EMIT Chosen(FixtureAt(event->position().toPoint()));
}

}  // namespace ui
