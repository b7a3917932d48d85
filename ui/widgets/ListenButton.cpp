// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/ListenButton.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/widgets/Look.h"

namespace ui {
namespace {

constexpr int kStep = 5;        ///< of an arrow key
constexpr double kSlack = 0.6;  ///< ems that a click may slip

}  // namespace

ListenButton::ListenButton(const QString& caption, const Skin& skin, const QColor& accent, QWidget* parent)
    : QPushButton(caption, parent), skin_(skin), accent_(accent) {
  setCheckable(true);
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  SetLevel(level_);
}

void ListenButton::SetLevel(int level) {
  const QString text = QString::number(level) + QStringLiteral(" %");
  if (level == level_ && accessibleDescription() == text) return;
  level_ = level;
  setAccessibleDescription(text);
  update();
}

QSize ListenButton::sizeHint() const {
  const int words = fontMetrics().horizontalAdvance(text() + QStringLiteral(" 100"));
  return {words + Em(*this, 1.2), std::max(36, Em(*this, kListHeadEms))};
}

void ListenButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF box = QRectF(rect()).adjusted(1, 1, -1, -1);
  const bool lit = isChecked() && isEnabled();
  const bool pointed = isEnabled() && underMouse();
  painter.setPen(QPen(hasFocus() ? skin_.text
                      : pointed  ? accent_
                                 : skin_.line,
                      (hasFocus() ? 2 : 1) * Line(*this)));
  painter.setBrush(lit ? accent_ : isEnabled() ? skin_.raised : skin_.panel);
  painter.drawRoundedRect(box, 4, 4);
  painter.setPen(lit ? skin_.on_deck : isEnabled() ? skin_.text : skin_.faint);
  const int bar = std::max(3, Em(*this, 0.3));
  const QRect words = rect().adjusted(Em(*this, 0.5), 0, -Em(*this, 0.5), -bar - 2);
  painter.drawText(words, Qt::AlignLeft | Qt::AlignVCenter, text());
  painter.drawText(words, Qt::AlignRight | Qt::AlignVCenter, QString::number(level_));
  const QRect groove(words.left(), height() - bar - 5, words.width(), bar);
  painter.fillRect(groove, lit ? skin_.on_deck.lighter(160) : skin_.well);
  QRect filled = groove;
  filled.setWidth(groove.width() * level_ / 100);
  painter.fillRect(filled, lit ? skin_.on_deck : isEnabled() ? accent_ : skin_.faint);
}

void ListenButton::Move(int level) {
  const int wanted = std::clamp(level, 0, 100);
  if (wanted == level_) return;
  SetLevel(wanted);
  Q_EMIT LevelMoved(wanted);
}

void ListenButton::mousePressEvent(QMouseEvent* event) {
  dragged_ = false;
  grabbed_at_ = event->position().toPoint().x();
  grabbed_level_ = level_;
  QPushButton::mousePressEvent(event);
}

void ListenButton::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) == 0) return;
  const int way = event->position().toPoint().x() - grabbed_at_;
  dragged_ = dragged_ || std::abs(way) > Em(*this, kSlack);
  if (dragged_) Move(grabbed_level_ + way * 100 / std::max(1, width()));
}

void ListenButton::mouseReleaseEvent(QMouseEvent* event) {
  if (!dragged_) return QPushButton::mouseReleaseEvent(event);
  dragged_ = false;
  setDown(false);
}

void ListenButton::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
      return Move(level_ - kStep);
    case Qt::Key_Right:
    case Qt::Key_Up:
      return Move(level_ + kStep);
    default:
      QPushButton::keyPressEvent(event);
  }
}

}  // namespace ui
