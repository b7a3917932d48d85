// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/EqGraph.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "app/sound/DeckView.h"
#include "decks/EqResponse.h"
#include "ui/models/EqText.h"
#include "ui/widgets/Look.h"

namespace ui {
namespace {

constexpr int kBands = decks::kEqBands;
constexpr double kMostShown = 20;  ///< dB up and down: neighbours add up
constexpr double kLowest = 30;     ///< Hz at the left edge
constexpr double kHighest = 20000;
constexpr double kColumnsAPoint = 3;  ///< pixels between two points of a curve

double CentreOf(int band) {
  return decks::kEqCentres[static_cast<std::size_t>(band)];
}

}  // namespace

EqGraph::EqGraph(Captions captions, const Skin& skin, QWidget* parent)
    : QWidget(parent), captions_(captions), skin_(skin) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QString EqGraph::BandText(int band) {
  const int centre = decks::kEqCentres[static_cast<std::size_t>(band)];
  return centre < 1000 ? QStringLiteral("%1 Hz").arg(centre) : QStringLiteral("%1 kHz").arg(centre / 1000);
}

QSize EqGraph::sizeHint() const {
  return {Em(*this, 18), Em(*this, 7)};
}

QSize EqGraph::minimumSizeHint() const {
  return {Em(*this, 15), Em(*this, 4)};
}

void EqGraph::Show(const std::array<int, 10>& sliders, const std::array<Curve, 2>& curves) {
  if (sliders == sliders_ && curves == curves_) return;
  sliders_ = sliders;
  curves_ = curves;
  update();
}

double EqGraph::RowOf(double decibels) const {
  const double share = std::clamp(decibels, -kMostShown, kMostShown) / kMostShown;
  return GraphHeight() / 2.0 - share * (GraphHeight() / 2.0 - 3);
}

int EqGraph::GraphHeight() const {
  return captions_ == Captions::None ? height() : height() - Em(*this, 1.0);
}

void EqGraph::PaintCaptions(QPainter& painter) const {
  QFont small = font();
  small.setPointSizeF(font().pointSizeF() * 0.7);
  painter.setFont(small);
  painter.setPen(skin_.dim);
  for (int band = 0; band < kBands; ++band) {
    const int centre = decks::kEqCentres[static_cast<std::size_t>(band)];
    const QString text = centre < 1000 ? QString::number(centre) : QStringLiteral("%1k").arg(centre / 1000);
    const int left = band * width() / kBands;
    painter.drawText(
        QRect(left, GraphHeight() - 2, (band + 1) * width() / kBands - left, height() - GraphHeight()),
        Qt::AlignCenter, text);
  }
}

int EqGraph::BandAt(int column) const {
  return std::clamp(column * kBands / std::max(1, width()), 0, kBands - 1);
}

QPoint EqGraph::HandleAt(int band) const {
  const int column = static_cast<int>((band + 0.5) * width() / kBands);
  return {column, static_cast<int>(std::lround(RowOf(sliders_[static_cast<std::size_t>(band)])))};
}

double EqGraph::FrequencyAt(double column) const {
  const double place = column * kBands / width() - 0.5;  // 0 at the centre of the first band
  const int left = std::clamp(static_cast<int>(std::floor(place)), -1, kBands - 1);
  const double from = left < 0 ? kLowest : CentreOf(left);
  const double to = left + 1 >= kBands ? kHighest : CentreOf(left + 1);
  const double start = left < 0 ? -0.5 : left;
  const double end = left + 1 >= kBands ? kBands - 0.5 : left + 1;
  return from * std::pow(to / from, (place - start) / (end - start));
}

void EqGraph::PaintCurve(QPainter& painter, const Curve& curve, QPen pen) const {
  if (curve.sample_rate <= 0) return;
  const decks::EqResponse response(curve.gains, curve.sample_rate);
  QPainterPath path;
  for (double column = 0; column <= width(); column += kColumnsAPoint) {
    const QPointF point(column, RowOf(response.At(FrequencyAt(column))));
    if (column == 0) {
      path.moveTo(point);
    } else {
      path.lineTo(point);
    }
  }
  pen.setWidth(std::max(2, Em(*this, 0.15)));
  painter.setPen(pen);
  painter.drawPath(path);
}

void EqGraph::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), skin_.well);
  for (const int decibels : {-12, 12}) {
    painter.fillRect(0, static_cast<int>(RowOf(decibels)), width(), Line(*this), skin_.line);
  }
  painter.fillRect(0, static_cast<int>(RowOf(0)), width(), Line(*this), skin_.dim);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  PaintCurve(painter, curves_[0], QPen(skin_.decks[0]));
  // Dashed, so that the first one is seen where both run together.
  PaintCurve(painter, curves_[1],
             QPen(skin_.decks[1], 2, curves_[0].sample_rate > 0 ? Qt::DashLine : Qt::SolidLine));
  const double radius = std::max(4, Em(*this, 0.38));
  for (int band = 0; band < kBands; ++band) {
    const QPoint handle = HandleAt(band);
    const bool chosen = band == band_ && (hasFocus() || held_);
    painter.setPen(QPen(chosen ? skin_.warning : skin_.text, (chosen ? 3 : 2) * Line(*this)));
    painter.setBrush(skin_.raised);
    painter.drawEllipse(QPointF(handle), radius, radius);
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
  if (captions_ == Captions::Inside) PaintCaptions(painter);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(hasFocus() ? skin_.text : skin_.line, (hasFocus() ? 2 : 1) * Line(*this)));
  painter.drawRect(hasFocus() ? rect().adjusted(1, 1, -1, -1) : rect().adjusted(0, 0, -1, -1));
}

void EqGraph::Want(int band, int decibels) {
  const int gain = std::clamp(decibels, -app::kMostEqGain, app::kMostEqGain);
  int& slider = sliders_[static_cast<std::size_t>(band)];
  if (gain == slider) return;
  slider = gain;
  update();
  Q_EMIT GainWanted(band, gain);
}

void EqGraph::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  band_ = BandAt(event->position().toPoint().x());
  held_ = true;
  held_at_ = event->position().toPoint().y();
  held_gain_ = sliders_[static_cast<std::size_t>(band_)];
  update();
}

// From wherever it is touched, so that no touch makes a band jump.
void EqGraph::mouseMoveEvent(QMouseEvent* event) {
  if (!held_) return event->ignore();
  const double row_of_a_decibel = (GraphHeight() / 2.0 - 3) / kMostShown;
  const double moved = (held_at_ - event->position().y()) / row_of_a_decibel;
  Want(band_, held_gain_ + static_cast<int>(std::lround(moved)));
}

void EqGraph::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  held_ = false;
  update();
}

void EqGraph::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  Want(BandAt(event->position().toPoint().x()), 0);
}

void EqGraph::keyPressEvent(QKeyEvent* event) {
  const int gain = sliders_[static_cast<std::size_t>(band_)];
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
      band_ = std::clamp(band_ + (event->key() == Qt::Key_Left ? -1 : 1), 0, kBands - 1);
      return update();
    case Qt::Key_Up:
      return Want(band_, gain + 1);
    case Qt::Key_Down:
      return Want(band_, gain - 1);
    case Qt::Key_Home:
    case Qt::Key_0:
      return Want(band_, 0);
    default:
      event->ignore();
  }
}

void EqGraph::focusInEvent(QFocusEvent*) {
  update();
}

void EqGraph::focusOutEvent(QFocusEvent*) {
  update();
}

// The tip names the band under the pointer and its gain.
bool EqGraph::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int band = BandAt(help->x());
  const int gain = sliders_[static_cast<std::size_t>(band)];
  QToolTip::showText(help->globalPos(),
                     QStringLiteral("%1: %2 dB\n%3").arg(BandText(band), GainText(gain), toolTip()), this);
  return true;
}

}  // namespace ui
