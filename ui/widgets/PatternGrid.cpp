// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/PatternGrid.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/widgets/Look.h"

namespace ui {
namespace {

constexpr double kRowEms = 1.1;
constexpr float kLeast = 0.25F;  ///< of the lit colour, so that a faint light is told from none

}  // namespace

QColor LightColour(const Skin& skin, float light) {
  if (!(light > 0)) return skin.well;
  const float share = kLeast + (1 - kLeast) * std::min(light, 1.0F);
  const auto mix = [share](int from, int to) { return from + int(float(to - from) * share); };
  return {mix(skin.well.red(), skin.warm.red()), mix(skin.well.green(), skin.warm.green()),
          mix(skin.well.blue(), skin.warm.blue())};
}

QColor InkOn(const Skin& skin, float light) {
  if (!(light > 0)) return skin.dim;
  return qGray(LightColour(skin, light).rgb()) > 110 ? QColor(Qt::black) : QColor(Qt::white);
}

PatternGrid::PatternGrid(lightorgan::Side side, const Skin& skin, QWidget* parent)
    : QWidget(parent), side_(side), skin_(skin) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
}

QSize PatternGrid::sizeHint() const {
  return {Em(*this, 20), Em(*this, 10 * kRowEms)};
}

QSize PatternGrid::minimumSizeHint() const {
  return {0, Em(*this, 4 * kRowEms)};
}

int PatternGrid::Rows() const {
  if (table_ == nullptr) return 0;
  const bool last_unplayed = side_ == lightorgan::Side::Io && table_->Rows() > 1;
  return table_->Rows() - (last_unplayed ? 1 : 0);
}

void PatternGrid::Show(std::shared_ptr<const lightorgan::StepTable> table, int row) {
  if (table == table_ && row == row_) return;
  table_ = std::move(table);
  row_ = row;
  update();
}

float PatternGrid::LightAt(int row, int output) const {
  const int value = table_->At(row, output);
  if (side_ == lightorgan::Side::Io) return value == 1 ? 1 : 0;
  return static_cast<float>(std::clamp(value, 0, 255)) / 255;
}

void PatternGrid::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), skin_.panel);
  const int rows = Rows();
  if (rows == 0) return;
  const int shown = std::clamp(height() / std::max(1, Em(*this, kRowEms)), 1, rows);
  const int first = std::clamp(row_ - shown / 2, 1, rows - shown + 1);
  const int tall = std::min(height() / shown, 2 * Em(*this, kRowEms));
  for (int i = 0; i < shown; ++i) PaintRow(painter, first + i, i * tall, tall);
}

void PatternGrid::PaintRow(QPainter& painter, int row, int top, int tall) const {
  const int outputs = table_->Outputs();
  const int line = Line(*this);
  const bool plays = row == row_;
  if (plays) painter.fillRect(0, top, width(), tall, skin_.chosen);
  for (int output = 1; output <= outputs; ++output) {
    const int left = width() * (output - 1) / outputs;
    const int wide = width() * output / outputs - left;
    const QRect cell(left + wide / 6, top + line, wide - wide / 3, tall - 2 * line);
    painter.fillRect(cell, LightColour(skin_, LightAt(row, output)));
  }
  if (!plays) return;
  painter.setPen(QPen(skin_.text, line));
  painter.drawRect(QRect(0, top, width(), tall).adjusted(line / 2, line / 2, -line, -line));
}

}  // namespace ui
