// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/TransportButton.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "ui/widgets/Look.h"

namespace ui {
namespace {

constexpr int kSmallestTouch = 36;

QPainterPath Triangle(const QPointF& a, const QPointF& b, const QPointF& c) {
  QPainterPath path(a);
  path.lineTo(b);
  path.lineTo(c);
  path.closeSubpath();
  return path;
}

}  // namespace

TransportButton::TransportButton(const Skin& skin, const QColor& accent, Symbol symbol, Size size,
                                 QWidget* parent)
    : QPushButton(parent), skin_(skin), accent_(accent), symbol_(symbol), size_(size) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void TransportButton::SetSymbol(Symbol symbol) {
  if (symbol == symbol_) return;
  symbol_ = symbol;
  update();
}

void TransportButton::SetLit(bool lit) {
  if (lit == lit_) return;
  lit_ = lit;
  update();
}

QSize TransportButton::sizeHint() const {
  const int side = std::max(kSmallestTouch, Em(*this, 3.4));
  return {size_ == Size::Wide ? side * 3 / 2 : side, side};
}

QPainterPath TransportButton::Outline(const QRectF& box) const {
  QPainterPath path;
  const double bar = box.width() * 0.3;
  switch (symbol_) {
    case Symbol::Play:
      return Triangle(box.topLeft(), QPointF(box.right(), box.center().y()), box.bottomLeft());
    case Symbol::Pause:
      path.addRect(QRectF(box.left(), box.top(), bar, box.height()));
      path.addRect(QRectF(box.right() - bar, box.top(), bar, box.height()));
      return path;
    case Symbol::Stop:
      path.addRect(box);
      return path;
    case Symbol::ToStart:
      path = Triangle(box.topRight(), QPointF(box.left() + bar, box.center().y()), box.bottomRight());
      path.addRect(QRectF(box.left(), box.top(), bar * 0.7, box.height()));
      return path;
  }
  return path;
}

void TransportButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), skin_.panel);
  QColor ground = lit_ ? accent_ : skin_.raised;
  if (isDown()) ground = ground.darker(130);
  const bool edge = hasFocus() || (underMouse() && isEnabled());
  painter.setPen(QPen(hasFocus() ? skin_.text
                      : edge     ? accent_
                                 : skin_.line,
                      (hasFocus() ? 2 : 1) * Line(*this)));
  painter.setBrush(isEnabled() ? ground : skin_.panel);
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 5, 5);
  const double side = height() * 0.36;
  QRectF box(0, 0, side, side);
  box.moveCenter(QRectF(rect()).center());
  painter.setPen(Qt::NoPen);
  painter.setBrush(!isEnabled() ? skin_.faint : lit_ ? skin_.on_deck : skin_.text);
  painter.drawPath(Outline(box));
}

}  // namespace ui
