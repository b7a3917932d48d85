// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/LevelMeter.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/models/EqText.h"
#include "ui/widgets/Look.h"

namespace ui {
namespace {

constexpr float kSilence = -90;      // dB
constexpr float kOverload = -0.01F;  // dB: full scale, less what rounding takes
constexpr float kFallSpeed = 40;     // dB a second
constexpr float kPeakSpeed = 20;     // dB a second, after the hold time
constexpr auto kHold = std::chrono::milliseconds(1500);
constexpr float kMarks[] = {0, -6, -12, -18, -24, -36, -48};
constexpr double kLampEms = 1.5;  ///< height of the overload mark

}  // namespace

LevelMeter::LevelMeter(const Skin& skin, QWidget* parent)
    : QWidget(parent), skin_(skin), bars_{Bar{kSilence, kSilence}, Bar{kSilence, kSilence}} {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

QSize LevelMeter::sizeHint() const {
  return {Em(*this, 4.2), Em(*this, 10)};
}

QSize LevelMeter::minimumSizeHint() const {
  return {Em(*this, 4.2), Em(*this, 6)};
}

void LevelMeter::Fall(Bar& bar, float db, support::TimePoint now) const {
  const float seconds = std::chrono::duration<float>(now - shown_at_).count();
  bar.level = std::max({db, bar.level - kFallSpeed * seconds, kSilence});
  if (db >= bar.peak) {
    bar.peak = db;
    bar.peak_at = now;
  } else if (now - bar.peak_at > kHold) {
    bar.peak = std::max({bar.level, bar.peak - kPeakSpeed * seconds, kSilence});
  }
}

void LevelMeter::Show(float left_db, float right_db, support::TimePoint now) {
  const float readings[] = {left_db, right_db};
  for (int i = 0; i < 2; ++i) {
    Bar& bar = bars_[static_cast<std::size_t>(i)];
    const int rows[] = {RowOf(bar.level), RowOf(bar.peak)};
    if (readings[i] >= kOverload && !overloaded_) {
      overloaded_ = true;
      update(MarkRect());
    }
    Fall(bar, std::isfinite(readings[i]) ? readings[i] : kSilence, now);
    const int new_rows[] = {RowOf(bar.level), RowOf(bar.peak)};
    for (int k = 0; k < 2; ++k) {
      if (rows[k] == new_rows[k]) continue;
      const int top = std::min(rows[k], new_rows[k]) - 1;
      update(QRect(BarRect(i).left(), top, BarRect(i).width(),
                   std::abs(rows[k] - new_rows[k]) + 2 * Line(*this) + 2));
    }
  }
  shown_at_ = now;
}

float LevelMeter::Peak() const {
  return std::max(bars_[0].peak, bars_[1].peak);
}

int LevelMeter::RowOf(float db) const {
  const int below = fontMetrics().height() / 2;
  const int above = Em(*this, kLampEms) + std::max(below, Em(*this, 0.6));
  const float share = std::clamp((db - kFloor) / -kFloor, 0.0F, 1.0F);
  return height() - below -
         static_cast<int>(std::lround(share * static_cast<float>(height() - below - above)));
}

QRect LevelMeter::MarkRect() const {
  return {0, 0, width(), Em(*this, kLampEms)};
}

void LevelMeter::ClearOverload() {
  if (!overloaded_) return;
  overloaded_ = false;
  update(MarkRect());
}

void LevelMeter::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  ClearOverload();
}

void LevelMeter::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space && event->key() != Qt::Key_Return) return event->ignore();
  ClearOverload();
}

void LevelMeter::focusInEvent(QFocusEvent*) {
  update();
}

void LevelMeter::focusOutEvent(QFocusEvent*) {
  update();
}

QRect LevelMeter::BarRect(int bar) const {
  const int each = Em(*this, 0.75);
  const int gap = std::max(2, Em(*this, 0.15));
  return {bar * (each + gap), RowOf(0), each, RowOf(kFloor) - RowOf(0)};
}

QPixmap LevelMeter::Draw(bool lit) const {
  QPixmap picture(size() * devicePixelRatio());
  picture.setDevicePixelRatio(devicePixelRatio());
  QPainter painter(&picture);
  painter.fillRect(rect(), skin_.panel);
  for (int i = 0; i < 2; ++i) {
    const QRect bar = BarRect(i);
    painter.fillRect(bar, skin_.well);
    if (!lit) continue;
    painter.fillRect(QRect(QPoint(bar.left(), RowOf(kWarm)), bar.bottomRight()), skin_.good);
    painter.fillRect(bar.left(), RowOf(kHot), bar.width(), RowOf(kWarm) - RowOf(kHot), skin_.warm);
    painter.fillRect(bar.left(), bar.top(), bar.width(), RowOf(kHot) - bar.top(), skin_.danger);
  }
  PaintScale(painter);
  return picture;
}

void LevelMeter::PaintScale(QPainter& painter) const {
  QFont small = font();
  small.setPointSizeF(font().pointSizeF() * 0.75);
  painter.setFont(small);
  painter.setPen(skin_.dim);
  const int left = BarRect(1).right() + Em(*this, 0.3);
  const int apart = painter.fontMetrics().ascent();
  int last = -apart;
  for (const float mark : kMarks) {
    const int row = RowOf(mark);
    if (row - last < apart) continue;  // a low meter has room for some of them
    last = row;
    const QRect box(left, row - fontMetrics().height() / 2, width() - left, fontMetrics().height());
    painter.drawText(box, Qt::AlignVCenter | Qt::AlignLeft, GainText(static_cast<int>(mark)));
  }
}

void LevelMeter::paintEvent(QPaintEvent* event) {
  if (lit_.isNull()) {
    lit_ = Draw(true);
    unlit_ = Draw(false);
  }
  QPainter painter(this);
  const double scale = devicePixelRatio();
  const auto copy = [&](const QPixmap& from, const QRect& part) {
    if (part.isEmpty()) return;
    painter.drawPixmap(QRectF(part), from,
                       QRectF(QPointF(part.topLeft()) * scale, QSizeF(part.size()) * scale));
  };
  copy(unlit_, event->rect());
  for (int i = 0; i < 2; ++i) {
    const Bar& bar = bars_[static_cast<std::size_t>(i)];
    const QRect whole = BarRect(i);
    copy(lit_, QRect(QPoint(whole.left(), RowOf(bar.level)), whole.bottomRight()) & event->rect());
    if (bar.peak > kFloor)
      copy(lit_, QRect(whole.left(), RowOf(bar.peak), whole.width(), 2 * Line(*this)) & event->rect());
  }
  painter.setPen(QPen(overloaded_ ? skin_.danger : skin_.line, Line(*this)));
  painter.setBrush(overloaded_ ? skin_.danger : skin_.well);
  painter.drawRect(QRectF(MarkRect()).adjusted(1, 1, -1, -1));
  if (!hasFocus()) return;
  painter.setPen(QPen(skin_.text, 2 * Line(*this)));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void LevelMeter::resizeEvent(QResizeEvent*) {
  lit_ = QPixmap();
}

void LevelMeter::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) lit_ = QPixmap();
  QWidget::changeEvent(event);
}

}  // namespace ui
