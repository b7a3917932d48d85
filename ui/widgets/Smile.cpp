// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/Smile.h"

#include <QPainter>
#include <QRadialGradient>

namespace ui {

QImage Smile(int pixels) {
  QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(pixels / 100.0, pixels / 100.0);
  QRadialGradient light(QPointF(38, 32), 70);
  light.setColorAt(0, QColor(255, 244, 150));
  light.setColorAt(0.6, QColor(255, 205, 30));
  light.setColorAt(1, QColor(225, 150, 0));
  painter.setPen(QPen(QColor(90, 55, 0), 4));
  painter.setBrush(light);
  painter.drawEllipse(QRectF(3, 3, 94, 94));
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(60, 35, 0));
  painter.drawEllipse(QRectF(29, 28, 13, 19));
  painter.drawEllipse(QRectF(58, 28, 13, 19));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(60, 35, 0), 7, Qt::SolidLine, Qt::RoundCap));
  painter.drawArc(QRectF(24, 26, 52, 52), 200 * 16, 140 * 16);
  return image;
}

}  // namespace ui
