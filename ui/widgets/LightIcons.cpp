// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/LightIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>

#include "dmx/PictureColours.h"

namespace ui {
namespace {

/// Pictures are drawn on a field of 24 by 24 with its middle at 12.
constexpr double kField = 24;
constexpr QPointF kMiddle(12, 12);

QPointF Around(double radius, double turn) {
  const double angle = turn * 2 * std::numbers::pi;
  return kMiddle + radius * QPointF(std::sin(angle), -std::cos(angle));
}

QPixmap Drawn(int pixels, const QColor& ink, const std::function<void(QPainter&)>& draw) {
  QPixmap picture(std::max(1, pixels), std::max(1, pixels));
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(pixels / kField, pixels / kField);
  painter.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  draw(painter);
  return picture;
}

void ArrowHead(QPainter& painter, const QPointF& tip, const QPointF& towards) {
  const QPointF back = tip - 3.5 * towards;
  const QPointF side(-towards.y() * 3.5, towards.x() * 3.5);
  painter.drawPolyline(QPolygonF{back + side, tip, back - side});
}

void DrawWay(QPainter& painter, const QPointF& towards) {
  painter.drawLine(kMiddle - 9 * towards, kMiddle + 9 * towards);
  ArrowHead(painter, kMiddle + 9 * towards, towards);
  ArrowHead(painter, kMiddle - 9 * towards, -towards);
}

void DrawTurn(QPainter& painter, double radius) {
  painter.drawArc(QRectF(12 - radius, 12 - radius, 2 * radius, 2 * radius), 60 * 16, 290 * 16);
  const QPointF end = Around(radius, 1.0 / 12);
  painter.drawPolyline(QPolygonF{end + QPointF(-4, -3.2), end, end + QPointF(1.5, -4.6)});
}

void DrawSun(QPainter& painter, int rays) {
  painter.setBrush(painter.pen().color());
  painter.drawEllipse(kMiddle, 3.5, 3.5);
  for (int ray = 0; ray < rays; ++ray)
    painter.drawLine(Around(6.5, double(ray) / rays), Around(9.5, double(ray) / rays));
}

void DrawShutter(QPainter& painter) {
  painter.drawEllipse(kMiddle, 9.5, 9.5);
  for (int blade = 0; blade < 6; ++blade)
    painter.drawLine(Around(9.5, blade / 6.0), Around(4.2, (blade + 1.4) / 6.0));
}

void DrawSectors(QPainter& painter) {
  for (int sector = 0; sector < 3; ++sector) {
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromHsv(sector * 120, 210, 240));
    painter.drawPie(QRectF(2.5, 2.5, 19, 19), sector * 120 * 16, 120 * 16);
    painter.restore();
  }
}

QPolygonF Star(int points, double outer, double inner) {
  QPolygonF star;
  for (int point = 0; point < 2 * points; ++point)
    star << Around(point % 2 == 0 ? outer : inner, point / (2.0 * points));
  return star;
}

void DrawSpeed(QPainter& painter) {
  painter.drawArc(QRectF(3, 5, 18, 18), -20 * 16, 220 * 16);
  painter.drawLine(QPointF(12, 14), QPointF(16.5, 8.5));
}

void DrawFree(QPainter& painter) {
  painter.setPen(QPen(painter.pen().color(), 1.6, Qt::DotLine, Qt::RoundCap));
  painter.drawRoundedRect(QRectF(4, 4, 16, 16), 3, 3);
}

void DrawFilledStar(QPainter& painter) {
  painter.setBrush(painter.pen().color());
  painter.drawPolygon(Star(5, 9, 3.8));
}

void DrawStarAndTurn(QPainter& painter) {
  DrawTurn(painter, 9.5);
  painter.setBrush(painter.pen().color());
  painter.setPen(Qt::NoPen);
  painter.drawPolygon(Star(5, 6, 2.6));
}

void DrawStrobe(QPainter& painter) {
  painter.setBrush(painter.pen().color());
  painter.drawPolygon(QPolygonF{{14, 2.5}, {6, 13.5}, {11.2, 13.5}, {9.5, 21.5}, {18, 10}, {12.6, 10}});
}

void DrawPulse(QPainter& painter) {
  painter.drawPolyline(QPolygonF{{2, 16}, {7, 16}, {12, 5}, {17, 16}, {22, 16}});
}

void DrawRainbow(QPainter& painter) {
  for (int bow = 0; bow < 4; ++bow) {
    painter.setPen(QPen(QColor::fromHsv(bow * 75, 220, 240), 2.4));
    const double radius = 10 - bow * 2.4;
    painter.drawArc(QRectF(12 - radius, 17 - radius, 2 * radius, 2 * radius), 0, 180 * 16);
  }
}

void DrawShake(QPainter& painter) {
  painter.drawPolyline(QPolygonF{{2, 12}, {5, 6}, {9, 18}, {13, 6}, {17, 18}, {20, 10}, {22, 12}});
}

using Draw = void (*)(QPainter&);

// Gobos: what is drawn is light.
void Dots(QPainter& painter) {
  for (int dot = 0; dot < 6; ++dot) painter.drawEllipse(Around(6, dot / 6.0), 1.9, 1.9);
  painter.drawEllipse(kMiddle, 1.9, 1.9);
}
void Spiral(QPainter& painter) {
  QPainterPath path(kMiddle);
  for (int step = 1; step <= 60; ++step) path.lineTo(Around(step * 8.5 / 60, step / 24.0));
  painter.strokePath(path, QPen(painter.brush().color(), 2.2, Qt::SolidLine, Qt::RoundCap));
}
void Cone(QPainter& painter) {
  painter.drawPolygon(QPolygonF{{12, 4}, {18.5, 18}, {5.5, 18}});
}
void Bars(QPainter& painter) {
  for (const double x : {5.5, 10.5, 15.5}) painter.drawRect(QRectF(x, 5, 2.6, 14));
}
void Leaves(QPainter& painter) {
  for (int leaf = 0; leaf < 5; ++leaf) {
    QPainterPath path(kMiddle);
    path.quadTo(Around(6, (leaf - 0.6) / 5.0), Around(9, leaf / 5.0));
    path.quadTo(Around(6, (leaf + 0.6) / 5.0), kMiddle);
    painter.drawPath(path);
  }
}
void Ring(QPainter& painter) {
  QPainterPath path;
  path.addEllipse(kMiddle, 8.5, 8.5);
  path.addEllipse(kMiddle, 5, 5);
  painter.drawPath(path);
}
void Cross(QPainter& painter) {
  painter.drawRect(QRectF(10, 3.5, 4, 17));
  painter.drawRect(QRectF(3.5, 10, 17, 4));
}
void Grid(QPainter& painter) {
  for (const double x : {5.5, 10.7, 15.9}) {
    for (const double y : {5.5, 10.7, 15.9}) painter.drawRect(QRectF(x, y, 2.8, 2.8));
  }
}
void Flower(QPainter& painter) {
  for (int petal = 0; petal < 6; ++petal) painter.drawEllipse(Around(5.2, petal / 6.0), 2.7, 2.7);
}
void Bolt(QPainter& painter) {
  painter.drawPolygon(QPolygonF{{14, 3}, {7, 13}, {11.4, 13}, {9.6, 21}, {17, 10.4}, {12.6, 10.4}});
}
void StarOfLight(QPainter& painter) {
  painter.drawPolygon(Star(5, 9, 3.8));
}
void Open(QPainter& painter) {
  painter.drawEllipse(kMiddle, 8.5, 8.5);
}

constexpr std::array<Draw, kGobos> kGoboDraws{Open,   Dots, StarOfLight, Spiral, Cone,   Bars,
                                              Leaves, Ring, Cross,       Grid,   Flower, Bolt};

static_assert(dmx::kPictureColours.size() == kColours);

}  // namespace

QIcon PlainIcon(const QPixmap& picture) {
  QIcon icon(picture);
  for (const QIcon::Mode mode : {QIcon::Selected, QIcon::Active, QIcon::Disabled})
    icon.addPixmap(picture, mode);
  return icon;
}

QPixmap FunctionPicture(dmx::ChannelFunction function, int pixels, const QColor& ink) {
  using Function = dmx::ChannelFunction;
  return Drawn(pixels, ink, [function](QPainter& painter) {
    switch (function) {
      case Function::Free:
        return DrawFree(painter);
      case Function::Pan:
        return DrawWay(painter, {1, 0});
      case Function::Tilt:
        return DrawWay(painter, {0, 1});
      case Function::Dimmer:
        return DrawSun(painter, 8);
      case Function::Shutter:
        return DrawShutter(painter);
      case Function::Color:
        return DrawSectors(painter);
      case Function::ColorRotation:
        DrawTurn(painter, 9.5);
        painter.translate(6, 6);
        painter.scale(0.5, 0.5);
        return DrawSectors(painter);
      case Function::Gobo:
        return DrawFilledStar(painter);
      case Function::GoboRotation:
        return DrawStarAndTurn(painter);
      case Function::PanTiltSpeed:
        return DrawSpeed(painter);
    }
  });
}

QPixmap EffectPicture(dmx::PresetEffect effect, int pixels, const QColor& ink) {
  using Effect = dmx::PresetEffect;
  return Drawn(pixels, ink, [effect](QPainter& painter) {
    switch (effect) {
      case Effect::None:
        return;
      case Effect::Open:
        painter.drawEllipse(kMiddle, 9, 9);
        return;
      case Effect::Closed:
        painter.setBrush(painter.pen().color());
        painter.drawEllipse(kMiddle, 9, 9);
        return;
      case Effect::Strobe:
        return DrawStrobe(painter);
      case Effect::Pulse:
        return DrawPulse(painter);
      case Effect::Rotation:
        return DrawTurn(painter, 8.5);
      case Effect::Rainbow:
        return DrawRainbow(painter);
      case Effect::Shake:
        return DrawShake(painter);
    }
  });
}

QPixmap GoboPicture(int gobo, int pixels, const QColor& ink) {
  return Drawn(pixels, ink, [gobo, ink](QPainter& painter) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, 1));
    painter.drawEllipse(kMiddle, 11.2, 11.2);
    if (gobo < 0 || gobo >= kGobos) return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    kGoboDraws[static_cast<std::size_t>(gobo)](painter);
  });
}

QColor ColourOfPicture(int colour) {
  return colour < 0 || colour >= kColours
             ? QColor()
             : QColor(QRgb{dmx::kPictureColours[static_cast<std::size_t>(colour)]});
}

QPixmap ColourPicture(int colour, int pixels, const QColor& edge) {
  return Drawn(pixels, edge, [colour, edge](QPainter& painter) {
    painter.setPen(QPen(edge, 1));
    const QColor fill = ColourOfPicture(colour);
    if (fill.isValid()) painter.setBrush(fill);
    painter.drawEllipse(kMiddle, 10, 10);
  });
}

}  // namespace ui
