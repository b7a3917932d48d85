// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/Rim.h"

#include <QColor>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace ui {
namespace {

constexpr double kSeen = 3;

/// As WCAG 2 defines it for sRGB.
double Luminance(const QColor& colour) {
  const auto part = [](double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

}  // namespace

double Contrast(const QColor& a, const QColor& b) {
  const auto [dark, light] = std::minmax({Luminance(a), Luminance(b)});
  return (light + 0.05) / (dark + 0.05);
}

void FillRimmed(QPainter& painter, const QRect& area, const QColor& colour, const QColor& ground,
                const QColor& rim, int line) {
  if (area.isEmpty()) return;
  if (Contrast(colour, ground) < kSeen) painter.fillRect(area.adjusted(-line, -line, line, line), rim);
  painter.fillRect(area, colour);
}

}  // namespace ui
