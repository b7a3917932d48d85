// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/HoldButton.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace ui {

HoldButton::HoldButton(const QString& caption, QWidget* parent) : QPushButton(caption, parent) {
  setAutoRepeat(false);
}

void HoldButton::Hold(bool held) {
  if (held_ == held) return;
  held_ = held;
  setDown(held);
  Q_EMIT Held(held);
}

void HoldButton::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Hold(true);
}

// A QPushButton comes up when the mouse slips off it.
void HoldButton::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) == 0) Hold(false);
}

void HoldButton::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Hold(false);
}

void HoldButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space) return QPushButton::keyPressEvent(event);
  if (!event->isAutoRepeat()) Hold(true);
}

void HoldButton::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space) return QPushButton::keyReleaseEvent(event);
  if (!event->isAutoRepeat()) Hold(false);
}

void HoldButton::focusOutEvent(QFocusEvent* event) {
  Hold(false);
  QPushButton::focusOutEvent(event);
}

void HoldButton::hideEvent(QHideEvent* event) {
  Hold(false);
  QPushButton::hideEvent(event);
}

void HoldButton::changeEvent(QEvent* event) {
  if (event->type() == QEvent::EnabledChange && !isEnabled()) Hold(false);
  QPushButton::changeEvent(event);
}

}  // namespace ui
