// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/LevelBar.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/widgets/LevelMeter.h"
#include "ui/widgets/Look.h"

namespace ui {

LevelBar::LevelBar(const Skin& skin, double ems, QWidget* parent)
    : QWidget(parent), skin_(skin), ems_(ems), levels_{LevelMeter::kFloor, LevelMeter::kFloor} {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LevelBar::sizeHint() const {
  return {Em(*this, ems_), Em(*this, 1.4)};
}

int LevelBar::ColumnOf(float db) const {
  const float share = std::clamp((db - LevelMeter::kFloor) / -LevelMeter::kFloor, 0.0F, 1.0F);
  return static_cast<int>(std::lround(share * static_cast<float>(width() - Em(*this, 0.8))));
}

void LevelBar::Show(const std::array<float, 2>& levels, bool overloaded) {
  const auto before = std::exchange(levels_, levels);
  const bool same = ColumnOf(before[0]) == ColumnOf(levels[0]) && ColumnOf(before[1]) == ColumnOf(levels[1]);
  if (same && overloaded_ == overloaded) return;
  overloaded_ = overloaded;
  update();
}

void LevelBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), skin_.panel);
  const int gap = std::max(2, Em(*this, 0.15));
  const int tall = (height() - gap) / 2;
  const std::pair<float, QColor> zones[] = {
      {LevelMeter::kWarm, skin_.good}, {LevelMeter::kHot, skin_.warm}, {0.0F, skin_.danger}};
  for (std::size_t bar = 0; bar < levels_.size(); ++bar) {
    const int top = static_cast<int>(bar) * (tall + gap);
    painter.fillRect(0, top, ColumnOf(0), tall, skin_.well);
    int from = 0;
    for (const auto& [end, colour] : zones) {
      const int to = std::min(ColumnOf(end), ColumnOf(levels_[bar]));
      if (to > from) painter.fillRect(from, top, to - from, tall, colour);
      from = std::max(from, to);
    }
  }
  const QRect mark(ColumnOf(0) + gap, 0, width() - ColumnOf(0) - gap, 2 * tall + gap);
  painter.fillRect(mark, overloaded_ ? skin_.danger : skin_.well);
}

}  // namespace ui
