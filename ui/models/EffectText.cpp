// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/EffectText.h"

#include <cmath>

namespace ui {
namespace {

/// Three figures at most.
QString Short(double value) {
  return QString::number(value, 'f', value < 9.95 ? (value < 0.995 ? 2 : 1) : 0);
}

QString Signed(double value) {
  const auto percent = static_cast<int>(std::lround(value * 100));
  const QString sign = percent < 0 ? QStringLiteral("−") : percent > 0 ? QStringLiteral("+") : QString();
  return sign + QString::number(std::abs(percent));
}

}  // namespace

QString EffectText(app::EffectKnob::Unit unit, double meaning) {
  using Unit = app::EffectKnob::Unit;
  switch (unit) {
    case Unit::Position:
      return Signed(meaning);
    case Unit::Share:
      return QString::number(std::lround(meaning * 100)) + QStringLiteral(" %");
    case Unit::Hertz:
      if (meaning >= 999.5) return Short(meaning / 1000) + QStringLiteral(" kHz");
      return QString::number(std::lround(meaning)) + QStringLiteral(" Hz");
    case Unit::Q:
      return QStringLiteral("Q ") + Short(meaning);
    case Unit::Seconds:
      if (meaning >= 0.9995) return Short(meaning) + QStringLiteral(" s");
      return QString::number(std::lround(meaning * 1000)) + QStringLiteral(" ms");
    case Unit::Turns:
      break;
  }
  return Short(meaning) + QStringLiteral(" Hz");
}

QString EffectText(const app::EffectKnob& knob, int slider) {
  return EffectText(knob.unit, double(app::MeaningOf(knob, slider)));
}

QString BeatText(int quarters) {
  if (quarters % 4 == 0) return QString::number(quarters / 4);
  return quarters == 2 ? QStringLiteral("1/2") : QString::number(quarters) + QStringLiteral("/4");
}

}  // namespace ui
