// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/ChannelFader.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "ui/widgets/Look.h"
#include "ui/widgets/Rim.h"

namespace ui {
namespace {

constexpr int kFullLevel = 255;
constexpr double kHeadEms = 1.4;
constexpr double kFootEms = 1.7;
constexpr double kBodyEms = 3.4;  ///< most of a strip's width that is used
constexpr double kPurposeEms = 1.1;
constexpr double kWireEms = 0.35;

}  // namespace

ChannelFader::ChannelFader(const Skin& skin, QWidget* parent)
    : QSlider(Qt::Vertical, parent), skin_(skin), colour_(skin.text) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setRange(0, kFullLevel);
  setPageStep(25);
  connect(this, &QSlider::valueChanged, this, [this](int level) {
    echo_.Sent(static_cast<float>(level), now_);
    Q_EMIT Moved(channel_, level);
  });
}

void ChannelFader::SetChannel(int channel, const QString& purpose) {
  if (channel == channel_ && purpose == purpose_) return;
  channel_ = channel;
  purpose_ = purpose;
  echo_ = {};
  DropTyped();
  update();
}

void ChannelFader::SetColour(const QColor& colour) {
  if (colour == colour_) return;
  colour_ = colour;
  update();
}

void ChannelFader::Show(dmx::DmxLevel level, dmx::DmxLevel on_the_wire, support::TimePoint now) {
  now_ = now;
  if (wire_ != on_the_wire) {
    wire_ = on_the_wire;
    update(Groove());
  }
  if (isSliderDown() || !echo_.Believe(level, now) || value() == level) return;
  const QSignalBlocker quiet(this);
  setValue(level);
}

QString ChannelFader::ValueText() const {
  return typed_.isEmpty() ? QString::number(value()) : typed_ + QLatin1Char('_');
}

QSize ChannelFader::sizeHint() const {
  return {std::max(36, Em(*this, 2.8)), Em(*this, 14)};
}

QSize ChannelFader::minimumSizeHint() const {
  return {Em(*this, 2.5), Em(*this, 9)};
}

QRect ChannelFader::Body() const {
  const int used = std::min(width(), Em(*this, kBodyEms));
  return {(width() - used) / 2, 0, used, height()};
}

QRect ChannelFader::Head() const {
  return {0, 0, width(), Em(*this, kHeadEms)};
}

QRect ChannelFader::Foot() const {
  return {0, height() - Em(*this, kFootEms), width(), Em(*this, kFootEms)};
}

QRect ChannelFader::OverGroove(QRect line) const {
  const QRect groove = Groove();
  const int middle = groove.center().x() - Em(*this, kWireEms) / 2;
  const int half = std::max(middle - line.left(), line.right() - middle);
  line.setLeft(middle - half);
  line.setRight(middle + half);
  return line;
}

QRect ChannelFader::Groove() const {
  const QRect body = Body();
  const int left = body.left() + Em(*this, kPurposeEms);
  return {left, Head().bottom() + 1, body.right() + 1 - left, Foot().top() - Head().bottom() - 1};
}

int ChannelFader::HandleHeight() const {
  return Em(*this, 1.1);
}

int ChannelFader::RowOf(int level) const {
  const QRect groove = Groove();
  const int half = HandleHeight() / 2 + 1;
  const int travel = std::max(1, groove.height() - 2 * half);
  return groove.bottom() - half - level * travel / kFullLevel;
}

void ChannelFader::sliderChange(SliderChange change) {
  if (change != SliderValueChange) return QSlider::sliderChange(change);
  update(Head());
  const int reach = HandleHeight();
  const int top = std::min(RowOf(painted_), RowOf(value())) - reach;
  const int bottom = std::max(RowOf(painted_), RowOf(value())) + reach;
  update(QRect(Groove().left(), top, Groove().width(), bottom - top));
  painted_ = value();
}

void ChannelFader::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.fillRect(event->rect(), skin_.panel);
  if (event->rect().intersects(Head())) {
    painter.setPen(!typed_.isEmpty() ? skin_.warning : value() > 0 ? skin_.text : skin_.dim);
    painter.drawText(OverGroove(Head()), Qt::AlignCenter, ValueText());
  }
  if (event->rect().left() < Groove().left()) PaintPurpose(painter);
  if (event->rect().intersects(Groove())) {
    PaintGroove(painter);
    PaintWire(painter);
  }
  if (event->rect().intersects(Foot())) {
    const int stripe = Em(*this, 0.3);
    QRect foot = Foot();
    const int line = Line(*this);
    FillRimmed(painter, foot.adjusted(2 * line, foot.height() - stripe, -2 * line, -line), colour_,
               skin_.panel, skin_.dim, line);
    foot.adjust(0, 0, 0, -stripe);
    painter.setPen(skin_.text);
    painter.drawText(OverGroove(foot), Qt::AlignCenter, QString::number(channel_));
  }
  if (!hasFocus()) return;
  painter.setPen(QPen(skin_.text, 2 * Line(*this)));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void ChannelFader::PaintPurpose(QPainter& painter) const {
  if (purpose_.isEmpty()) return;
  const QRect groove = Groove();
  painter.save();
  painter.setPen(skin_.dim);
  painter.translate(Body().left(), groove.bottom());
  painter.rotate(-90);
  const QRect room(0, 0, groove.height(), Em(*this, kPurposeEms) + Em(*this, 0.2));
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(purpose_, Qt::ElideRight, room.width()));
  painter.restore();
}

void ChannelFader::PaintGroove(QPainter& painter) const {
  const QRect area = Groove().adjusted(0, 0, -Em(*this, kWireEms) - Line(*this), 0);
  const int line = Line(*this);
  const int wide = std::max(4, Em(*this, 0.4));
  const int left = area.center().x() - wide / 2;
  for (int mark = 0; mark <= 4; ++mark) {
    painter.fillRect(area.left() + line, RowOf(kFullLevel * mark / 4), area.width() - 2 * line, line,
                     skin_.line);
  }
  painter.fillRect(left - line, RowOf(kFullLevel), wide + 2 * line, RowOf(0) - RowOf(kFullLevel), skin_.line);
  painter.fillRect(left, RowOf(kFullLevel), wide, RowOf(0) - RowOf(kFullLevel), skin_.well);
  FillRimmed(painter, {left, RowOf(value()), wide, RowOf(0) - RowOf(value())}, colour_, skin_.well, skin_.dim,
             line);
  const int high = HandleHeight();
  const QRectF handle(area.left() + line, RowOf(value()) - high / 2.0, area.width() - 2 * line, high);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(hasFocus() ? skin_.text : skin_.ground, line));
  painter.setBrush(skin_.raised.lighter(isSliderDown() ? 150 : 125));
  painter.drawRoundedRect(handle, 2 * line, 2 * line);
  painter.setRenderHint(QPainter::Antialiasing, false);
  FillRimmed(
      painter,
      QRect(int(handle.left()) + 2 * line, RowOf(value()) - line, int(handle.width()) - 4 * line, 2 * line),
      colour_, skin_.raised.lighter(125), skin_.dim, line);
}

void ChannelFader::PaintWire(QPainter& painter) const {
  const QRect groove = Groove();
  const int wide = Em(*this, kWireEms);
  const int left = groove.right() + 1 - wide - Line(*this);
  painter.fillRect(left, RowOf(kFullLevel), wide, RowOf(0) - RowOf(kFullLevel), skin_.well);
  painter.fillRect(left, RowOf(wire_), wide, RowOf(0) - RowOf(wire_), skin_.text);
}

void ChannelFader::Type(const QString& digit) {
  typed_ += digit;
  update(Head());
  if (typed_.size() == 3) TakeTyped();
}

void ChannelFader::TakeTyped() {
  const int level = std::min(typed_.toInt(), kFullLevel);
  DropTyped();
  setValue(level);
}

void ChannelFader::DropTyped() {
  if (typed_.isEmpty()) return;
  typed_.clear();
  update(Head());
}

void ChannelFader::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return event->ignore();
  if (key >= Qt::Key_0 && key <= Qt::Key_9) return Type(QString::number(key - Qt::Key_0));
  if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !typed_.isEmpty()) return TakeTyped();
  if (key == Qt::Key_Backspace && !typed_.isEmpty()) {
    typed_.chop(1);
    return update(Head());
  }
  const bool typing = !typed_.isEmpty();
  DropTyped();
  if (key == Qt::Key_Escape && typing) return;
  if (key == Qt::Key_Left) return Q_EMIT StepWanted(-1);
  if (key == Qt::Key_Right) return Q_EMIT StepWanted(1);
  QSlider::keyPressEvent(event);
}

void ChannelFader::focusInEvent(QFocusEvent* event) {
  QSlider::focusInEvent(event);
  update();
}

void ChannelFader::focusOutEvent(QFocusEvent* event) {
  DropTyped();
  QSlider::focusOutEvent(event);
  update();
}

void ChannelFader::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  DropTyped();
  grabbed_at_ = event->position().toPoint().y();
  grabbed_value_ = value();
  setSliderDown(true);
  update(Groove());
}

void ChannelFader::mouseMoveEvent(QMouseEvent* event) {
  if (!isSliderDown()) return event->ignore();
  const int way = grabbed_at_ - event->position().toPoint().y();
  const int travel = std::max(1, RowOf(0) - RowOf(kFullLevel));
  setValue(grabbed_value_ + static_cast<int>(std::lround(double(way) * kFullLevel / travel)));
}

void ChannelFader::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  setSliderDown(false);
  update(Groove());
}

void ChannelFader::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
  if (event->button() != Qt::LeftButton) return;
  setValue(value() > kFullLevel / 2 ? 0 : kFullLevel);
  grabbed_value_ = value();
}

}  // namespace ui
