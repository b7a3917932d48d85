// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/MasterMeter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/widgets/Look.h"

namespace ui {
namespace {

constexpr float kMasterFloor = -48;   // dB, lower end of the bars
constexpr float kFullReduction = 12;  // dB, the whole bar
constexpr float kMasterLoud = -9;     // LUFS, from here the bar warns
constexpr float kMasterHot = -1;      // dBTP, from here it is red
constexpr auto kMasterHold = std::chrono::seconds(3);

}  // namespace

MasterMeter::MasterMeter(const Skin& skin, QWidget* parent) : QWidget(parent), skin_(skin) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

QSize MasterMeter::sizeHint() const {
  return {Em(*this, 1.4), Em(*this, 10)};
}

QSize MasterMeter::minimumSizeHint() const {
  return {Em(*this, 1.4), Em(*this, 6)};
}

int MasterMeter::RowOf(float db) const {
  const float share = std::clamp((db - kMasterFloor) / -kMasterFloor, 0.0F, 1.0F);
  return height() - static_cast<int>(std::lround(share * static_cast<float>(height())));
}

MasterMeter::Rows MasterMeter::RowsNow() const {
  const float share = std::clamp(reading_.reduction.value / kFullReduction, 0.0F, 1.0F);
  return {RowOf(reading_.momentary.value), RowOf(reading_.short_term.value), RowOf(reading_.true_peak.value),
          RowOf(peak_.value), static_cast<int>(std::lround(share * static_cast<float>(height())))};
}

void MasterMeter::Show(const decks::MasterReading& reading, support::TimePoint now) {
  reading_ = reading;
  if (reading.true_peak >= peak_ || now - peak_at_ > kMasterHold) {
    peak_ = reading.true_peak;
    peak_at_ = now;
  }
  if (RowsNow() != shown_) update();
}

void MasterMeter::paintEvent(QPaintEvent*) {
  shown_ = RowsNow();
  QPainter painter(this);
  painter.fillRect(rect(), skin_.panel);
  const int gap = Line(*this);
  const int each = (width() - 2 * gap) / 3;
  const int line = 2 * Line(*this);
  const auto bar = [&](int number, int top, int bottom, const QColor& colour) {
    painter.fillRect(number * (each + gap), top, each, std::max(0, bottom - top), colour);
  };
  for (int number = 0; number < 3; ++number) bar(number, 0, height(), skin_.well);
  bar(0, shown_.loudness, height(), reading_.momentary.value > kMasterLoud ? skin_.warm : skin_.good);
  if (shown_.mark < height()) bar(0, shown_.mark, shown_.mark + line, skin_.text);
  const auto colour = [&](support::Decibels peak) {
    return peak.value > kMasterHot ? skin_.danger : skin_.good;
  };
  bar(1, shown_.peak, height(), colour(reading_.true_peak));
  if (shown_.held < height()) bar(1, shown_.held, shown_.held + line, colour(peak_));
  bar(2, 0, shown_.reduction, skin_.warm);
}

}  // namespace ui
