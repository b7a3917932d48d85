// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/WavePaint.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace ui {
namespace {

/// Bands are root mean squares, far below the peaks around them; so much taller they fill the outline.
constexpr double kBassGain = 1.9;
constexpr double kMidGain = 1.9;
constexpr double kTrebleGain = 1.7;

QColor Mix(const QColor& a, const QColor& b, double share_of_b) {
  const auto part = [share_of_b](int x, int y) { return static_cast<int>(x + (y - x) * share_of_b); };
  return {part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue())};
}

int Height(double value, double full, double gain, int half) {
  return static_cast<int>(std::lround(std::min(1.0, value / full * gain) * half));
}

void PaintColumn(QPainter& painter, int x, int middle, int half, const music::WaveColumn& column,
                 const WaveInk& ink) {
  const int up = Height(std::max<int>(column.highest, 0), 127, 1, half);
  const int down = Height(std::max(-column.lowest, 0), 127, 1, half);
  painter.fillRect(x, middle - up, 1, up + down + 1, ink.outline);
  const auto band = [&](double value, double gain, const QColor& colour) {
    const int tall = std::min(Height(value, 255, gain, half), std::max(up, down));
    if (tall > 0) painter.fillRect(x, middle - tall, 1, 2 * tall + 1, colour);
  };
  band(column.low, kBassGain, ink.low);
  band(column.mid, kMidGain, ink.mid);
  band(column.high, kTrebleGain, ink.high);
}

}  // namespace

WaveInk InkOf(const Skin& skin, const QColor& accent, WaveTone tone) {
  const double back = tone == WaveTone::Heard ? 0.55 : 0;
  return {Mix(Mix(accent, skin.well, 0.62), skin.well, back), Mix(accent, skin.well, back),
          Mix(Mix(accent, skin.text, 0.5), skin.well, back), Mix(skin.text, skin.well, back)};
}

music::WaveColumn Together(std::span<const music::WaveColumn> columns) {
  if (columns.empty()) return {};
  music::WaveColumn all = columns.front();
  for (const music::WaveColumn& column : columns.subspan(1)) {
    all.lowest = std::min(all.lowest, column.lowest);
    all.highest = std::max(all.highest, column.highest);
    all.low = std::max(all.low, column.low);
    all.mid = std::max(all.mid, column.mid);
    all.high = std::max(all.high, column.high);
  }
  return all;
}

void PaintWave(QPainter& painter, const QRect& box, std::span<const music::WaveColumn> columns, double first,
               double step, const WaveInk& ink) {
  const int middle = box.top() + box.height() / 2;
  const int half = std::max(1, box.height() / 2 - 1);
  const auto count = static_cast<double>(columns.size());
  for (int x = 0; x < box.width(); ++x) {
    const double from = std::floor(first + x * step);
    const double to = std::max(from + 1, std::floor(first + (x + 1) * step));
    if (from < 0 || from >= count) continue;
    const auto begin = static_cast<std::size_t>(from);
    const auto length = static_cast<std::size_t>(std::min(to, count)) - begin;
    PaintColumn(painter, box.left() + x, middle, half, Together(columns.subspan(begin, length)), ink);
  }
}

}  // namespace ui
