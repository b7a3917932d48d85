// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>

#include "app/sound/DeckView.h"
#include "ui/models/SentEcho.h"
#include "ui/widgets/Look.h"

class QPushButton;

namespace app {
class Deck;
class EffectStation;
}  // namespace app

namespace ui {

class Knob;

/// A deck's own channel of the desk in one row: trim, three bands each with a button that takes it out, and
/// the filter.
class ToneStrip final : public QWidget {
  Q_OBJECT

 public:
  ToneStrip(app::Deck& deck, app::EffectStation& effects, const Look& look, QWidget* parent = nullptr);

  void Show(const app::DeckView& view, support::TimePoint now);
  void ToggleKill(app::ToneBand band);

 private:
  struct Band {
    Knob* knob = nullptr;
    QPushButton* kill = nullptr;
    SentEcho echo;
  };

  QWidget* MakeTrim();
  QWidget* MakeBand(app::ToneBand band);
  QWidget* MakeFilter();
  void TurnTrim(int slider);
  void TurnBand(app::ToneBand band, int decibels);
  void TurnFilter(int slider);
  void TellTrim();
  void TellFilter();
  void TellBand(app::ToneBand band);
  [[nodiscard]] Band& Of(app::ToneBand band) { return bands_[app::PlaceOf(band)]; }

  const int deck_;
  app::Deck& commands_;
  app::EffectStation& effects_;
  Look look_;
  support::TimePoint now_{};
  Knob* trim_ = nullptr;
  SentEcho trim_echo_;
  std::array<Band, app::kToneBands> bands_;
  Knob* filter_ = nullptr;
  SentEcho filter_echo_;
};

}  // namespace ui
