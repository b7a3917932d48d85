// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "decks/Crossfader.h"
#include "ui/widgets/Look.h"

class QCheckBox;
class QGridLayout;
class QLabel;

namespace app {
class Decks;
class ListStation;
}  // namespace app

namespace support {
class Settings;
}  // namespace support

namespace ui {

class AutomixChoices;
class Fader;
class QuietCombo;

/// How decks are mixed: the crossfader's curve and the threshold of the mix points.
class MixingPanel final : public QWidget {
  Q_OBJECT

 public:
  MixingPanel(app::Decks& decks, app::ListStation& lists, support::Settings& settings,
              decks::CrossfaderCurve curve, const Look& look, QWidget* parent = nullptr);

  /// Takes over what was chosen elsewhere.
  void Show();

 Q_SIGNALS:
  void CurveChosen(decks::CrossfaderCurve curve);

 private:
  void Send();
  QGridLayout* LayOutChoices(const Look& look);
  QuietCombo* MakeRange(int deck, const Look& look);
  QCheckBox* MakeSeekGuard(const Look& look);

  app::Decks& decks_;
  app::ListStation& lists_;
  support::Settings& settings_;
  QuietCombo* curve_;
  QuietCombo* stretch_;
  Fader* threshold_;
  QLabel* threshold_value_;
  AutomixChoices* automix_;
  int sent_;
};

}  // namespace ui
