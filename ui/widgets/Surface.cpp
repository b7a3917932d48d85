// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/Surface.h"

#include <QPaintEvent>
#include <QPainter>
#include <utility>

#include "ui/widgets/Look.h"

namespace ui {
namespace {

constexpr int kStripeLines = 3;

}  // namespace

Surface::Surface(QColor ground, QWidget* parent) : QWidget(parent), ground_(std::move(ground)) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void Surface::SetStripe(const QColor& colour) {
  stripe_ = colour;
  update();
}

void Surface::SetWelcoming(bool welcoming) {
  if (welcoming == welcoming_) return;
  welcoming_ = welcoming;
  update();
}

void Surface::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.fillRect(event->rect(), ground_);
  if (stripe_.isValid()) painter.fillRect(0, 0, width(), kStripeLines * Line(*this), stripe_);
  if (!welcoming_) return;
  painter.setPen(
      QPen(stripe_.isValid() ? stripe_ : palette().color(QPalette::Highlight), kStripeLines * Line(*this)));
  painter.drawRect(rect().adjusted(1, 1, -2, -2));
}

}  // namespace ui
