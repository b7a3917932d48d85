// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/EqText.h"

#include <QStringList>
#include <algorithm>
#include <cstdlib>

#include "app/WorkstationView.h"

namespace ui {

QString GainText(int decibels) {
  const QString number = QString::number(std::abs(decibels));
  return decibels == 0 ? number : (decibels > 0 ? QStringLiteral("+") : QStringLiteral("−")) + number;
}

QString EqValuesText(const decks::EqPreset& preset) {
  QStringList values;
  for (const int value : decks::EqValuesOf(preset.value_line)) values += GainText(value);
  return values.join(QLatin1Char(' '));
}

std::array<int, 10> ShownSliders(const std::array<int, decks::kEqSliders>& sliders) {
  std::array<int, 10> shown{};
  std::copy_n(sliders.begin() + 1, shown.size(), shown.begin());
  return shown;
}

std::array<EqGraph::Curve, 2> CurvesOf(const app::WorkstationView& view) {
  std::array<EqGraph::Curve, 2> curves;
  for (std::size_t deck = 0; deck < curves.size(); ++deck) {
    curves[deck] = {view.decks[deck].equaliser, view.decks[deck].sample_rate};
  }
  return curves;
}

}  // namespace ui
