// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/MixHandle.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "ui/models/TimeText.h"
#include "ui/widgets/Look.h"

namespace ui {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr microseconds kFine = milliseconds(10);
constexpr microseconds kCoarse = std::chrono::seconds(1);

}  // namespace

MixHandle::MixHandle(app::MixPoint which, const Skin& skin, QWidget* parent)
    : QWidget(parent), which_(which), skin_(skin) {
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::SizeHorCursor);
  hide();
}

QSize MixHandle::sizeHint() const {
  return {std::max(44, Em(*this, 3.2)), std::max(36, Em(*this, 2.6))};
}

void MixHandle::PlaceAt(int column) {
  const QSize room = parentWidget()->size();
  resize(sizeHint().boundedTo(room));
  const int left = std::clamp(column - width() / 2, 0, std::max(0, room.width() - width()));
  stem_ = std::clamp(column - left, 0, width() - 1);
  move(left, 0);
  update();
}

void MixHandle::Show(microseconds place, bool moved) {
  const QString text = FineTimeText(place);
  if (accessibleDescription() != text) setAccessibleDescription(text);
  if (moved == moved_) return;
  moved_ = moved;
  update();
}

void MixHandle::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool start = which_ == app::MixPoint::Start;
  const double tall = std::max(12, Em(*this, 1.0));
  const double wide = tall * 0.9;
  const double stem = std::clamp(stem_, 1, width() - 1);
  QPainterPath flag(QPointF(stem, 1));
  flag.lineTo(start ? stem + wide : stem - wide, 1 + tall / 2);
  flag.lineTo(stem, 1 + tall);
  flag.closeSubpath();
  painter.setPen(QPen(hasFocus() ? skin_.text : skin_.good, std::max(2, Em(*this, 0.12))));
  painter.setBrush(moved_ || held_ ? skin_.good : skin_.well);
  painter.drawPath(flag);
}

void MixHandle::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  held_ = true;
  dragged_ = false;
  grip_ = event->position().toPoint().x() - Stem();
  update();
}

void MixHandle::mouseMoveEvent(QMouseEvent* event) {
  if (!held_) return event->ignore();
  dragged_ = true;
  Q_EMIT Dragged(mapToParent(event->position().toPoint()).x() - grip_);
}

void MixHandle::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !held_) return event->ignore();
  held_ = false;
  update();
  if (dragged_) Q_EMIT Dropped();
}

void MixHandle::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  Q_EMIT ResetWanted();
}

void MixHandle::keyPressEvent(QKeyEvent* event) {
  const bool far = (event->modifiers() & Qt::ShiftModifier) != 0;
  const microseconds step = far ? kCoarse : kFine;
  switch (event->key()) {
    case Qt::Key_Left:
      Q_EMIT StepWanted(-step);
      return;
    case Qt::Key_Right:
      Q_EMIT StepWanted(step);
      return;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      Q_EMIT ResetWanted();
      return;
    default:
      event->ignore();
  }
}

void MixHandle::focusInEvent(QFocusEvent*) {
  update();
}

void MixHandle::focusOutEvent(QFocusEvent*) {
  update();
}

}  // namespace ui
