// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/WireStrip.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "ui/strings/ConsoleWords.h"

namespace ui {
namespace {

constexpr int kRowsOfCells = 4;
constexpr int kInRow = dmx::kUniverseChannels / kRowsOfCells;

QColor Between(const QColor& dark, const QColor& bright, int level) {
  const auto mix = [&](int from, int to) { return from + (to - from) * level / 255; };
  return {mix(dark.red(), bright.red()), mix(dark.green(), bright.green()), mix(dark.blue(), bright.blue())};
}

}  // namespace

WireStrip::WireStrip(const Look& look, QWidget* parent) : QWidget(parent), look_(look) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize WireStrip::sizeHint() const {
  return {Em(*this, 30), std::max(4, Em(*this, 0.5)) * kRowsOfCells + 2 * Line(*this)};
}

QRect WireStrip::CellOf(int channel) const {
  const int row = (channel - 1) / kInRow;
  const int column = (channel - 1) % kInRow;
  const int left = column * width() / kInRow;
  const int top = row * height() / kRowsOfCells;
  return {left, top, (column + 1) * width() / kInRow - left, (row + 1) * height() / kRowsOfCells - top};
}

int WireStrip::ChannelAt(const QPoint& place) const {
  const int column = std::clamp(place.x() * kInRow / std::max(1, width()), 0, kInRow - 1);
  const int row = std::clamp(place.y() * kRowsOfCells / std::max(1, height()), 0, kRowsOfCells - 1);
  return row * kInRow + column + 1;
}

void WireStrip::Show(const Levels& levels) {
  QRect changed;
  for (int channel = 1; channel <= dmx::kUniverseChannels; ++channel) {
    const auto place = static_cast<std::size_t>(channel - 1);
    if (levels[place] != levels_[place]) changed |= CellOf(channel);
  }
  if (changed.isNull()) return;
  levels_ = levels;
  update(changed);
}

void WireStrip::SetFrame(int first, int count) {
  if (first == first_ && count == count_) return;
  first_ = first;
  count_ = count;
  update();
}

void WireStrip::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.fillRect(event->rect(), look_.skin.panel);
  for (int channel = 1; channel <= dmx::kUniverseChannels; ++channel) {
    const QRect cell = CellOf(channel);
    if (!cell.intersects(event->rect())) continue;
    const int level = levels_[static_cast<std::size_t>(channel - 1)];
    painter.fillRect(cell.adjusted(0, 0, -1, -1), Between(look_.skin.line, look_.skin.decks[1], level));
    if (level == 0) painter.fillRect(cell.adjusted(0, 0, -1, -1), look_.skin.well);
  }
  painter.setPen(QPen(look_.skin.text, Line(*this)));
  for (int row = 0; row < kRowsOfCells; ++row) {
    const int from = std::max(first_, row * kInRow + 1);
    const int to = std::min(first_ + count_ - 1, (row + 1) * kInRow);
    if (from > to) continue;
    painter.drawRect((CellOf(from) | CellOf(to)).adjusted(0, 0, -1, -1));
  }
}

void WireStrip::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  Q_EMIT ChannelWanted(ChannelAt(event->position().toPoint()));
}

bool WireStrip::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int channel = ChannelAt(help->pos());
  QToolTip::showText(
      help->globalPos(),
      look_.say(ConsoleWord::WireCell).arg(channel).arg(levels_[static_cast<std::size_t>(channel - 1)]), this,
      CellOf(channel));
  return true;
}

}  // namespace ui
