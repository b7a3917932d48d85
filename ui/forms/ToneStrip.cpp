// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ToneStrip.h"

#include <QPushButton>
#include <QSignalBlocker>

#include "app/Deck.h"
#include "app/EffectStation.h"
#include "app/sound/DeckTone.h"
#include "ui/models/EffectText.h"
#include "ui/models/EqText.h"
#include "ui/models/KeyMap.h"
#include "ui/strings/DeskWords.h"
#include "ui/strings/EffectWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/Knob.h"

namespace ui {
namespace {

constexpr std::array kBands{app::ToneBand::High, app::ToneBand::Mid, app::ToneBand::Bass};

struct Words {
  DeskWord caption;
  DeskWord tip;
  const char* name;
  Command key;
};

Words WordsOf(app::ToneBand band) {
  switch (band) {
    case app::ToneBand::High:
      return {DeskWord::High, DeskWord::HighTip, "High", Command::KillHigh};
    case app::ToneBand::Mid:
      return {DeskWord::Mid, DeskWord::MidTip, "Mid", Command::KillMid};
    case app::ToneBand::Bass:
      break;
  }
  return {DeskWord::Bass, DeskWord::BassTip, "Bass", Command::KillBass};
}

/// "+2.4 dB"
QString TrimText(int slider) {
  const double db = double(app::TrimOf(slider).value);
  const QString sign = db < 0 ? QStringLiteral("−") : db > 0 ? QStringLiteral("+") : QStringLiteral("±");
  return sign + QString::number(std::abs(db), 'f', 1) + QStringLiteral(" dB");
}

void Tell(QWidget& knob, const QString& tip, const QString& value) {
  if (knob.accessibleDescription() == value && !knob.toolTip().isEmpty()) return;
  knob.setAccessibleDescription(value);
  knob.setToolTip(tip.arg(value));
}

}  // namespace

ToneStrip::ToneStrip(app::Deck& deck, app::EffectStation& effects, const Look& look, QWidget* parent)
    : QWidget(parent), deck_(deck.Number()), commands_(deck), effects_(effects), look_(look) {
  FillRow(*this, 0, 0.6,
          {MakeTrim(), Part::Room(), MakeBand(app::ToneBand::High), MakeBand(app::ToneBand::Mid),
           MakeBand(app::ToneBand::Bass), MakeFilter()});
  TellTrim();
  TellFilter();
  for (const app::ToneBand band : kBands) TellBand(band);
}

QWidget* ToneStrip::MakeTrim() {
  const auto& say = look_.say;
  trim_ = new Knob(0, 100, app::kMiddleTrim, look_.skin, look_.skin.Deck(deck_));
  Name(*trim_, DeckName(deck_, "Trim"), say(DeskWord::TrimName).arg(deck_), {});
  connect(trim_, &QSlider::valueChanged, this, &ToneStrip::TurnTrim);
  auto* box = new QWidget;
  FillRow(*box, 0, 0.3, {trim_, Caption(say(DeskWord::Trim), look_.skin.dim)});
  return box;
}

QWidget* ToneStrip::MakeBand(app::ToneBand band) {
  const auto& say = look_.say;
  const Words words = WordsOf(band);
  const QString caption = say(words.caption);
  Band& made = Of(band);
  made.knob = new Knob(app::kLeastTone, app::kMostTone, 0, look_.skin, look_.skin.Deck(deck_));
  Name(*made.knob, DeckName(deck_, words.name), say(DeskWord::BandName).arg(deck_).arg(caption), {});
  connect(made.knob, &QSlider::valueChanged, this, [this, band](int value) { TurnBand(band, value); });
  made.kill = new QPushButton(caption);
  made.kill->setCheckable(true);
  SetKind(*made.kill, deck_ == 1 ? "lamp1" : "lamp2");
  const QString key = KeyText(KeyOf(words.key, deck_));
  Name(*made.kill, DeckName(deck_, (std::string("Kill") + words.name).c_str()),
       say(DeskWord::Kill).arg(deck_).arg(caption), say(Say::KeyHint).arg(say(DeskWord::KillTip), key));
  connect(made.kill, &QPushButton::clicked, this,
          [this, band](bool killed) { commands_.Kill(band, killed); });
  auto* box = new QWidget;
  FillRow(*box, 0, 0.2, {made.knob, made.kill});
  return box;
}

QWidget* ToneStrip::MakeFilter() {
  const auto& say = look_.say;
  filter_ = new Knob(0, 100, app::kMiddleFilter, look_.skin, look_.skin.Deck(deck_));
  Name(*filter_, DeckName(deck_, "Filter"), say(EffectWord::DeckFilter).arg(deck_), {});
  connect(filter_, &QSlider::valueChanged, this, &ToneStrip::TurnFilter);
  auto* box = new QWidget;
  FillRow(*box, 0, 0.2, {filter_, Caption(say(EffectWord::UnitFilter), look_.skin.dim)});
  return box;
}

void ToneStrip::TurnFilter(int slider) {
  filter_echo_.Sent(float(slider), now_);
  effects_.Turn(deck_, app::EffectControl::Filter, slider);
  TellFilter();
}

void ToneStrip::TellFilter() {
  Tell(*filter_, look_.say.Tip(EffectWord::DeckFilter),
       EffectText(app::KnobOf(app::EffectControl::Filter), filter_->value()));
}

void ToneStrip::TurnTrim(int slider) {
  trim_echo_.Sent(float(slider), now_);
  commands_.SetTrim(slider);
  TellTrim();
}

void ToneStrip::TurnBand(app::ToneBand band, int decibels) {
  Of(band).echo.Sent(float(decibels), now_);
  commands_.SetTone(band, decibels);
  TellBand(band);
}

void ToneStrip::TellTrim() {
  Tell(*trim_, look_.say(DeskWord::TrimTip), TrimText(trim_->value()));
}

void ToneStrip::TellBand(app::ToneBand band) {
  Knob& knob = *Of(band).knob;
  Tell(knob, look_.say(WordsOf(band).tip), GainText(knob.value()) + QStringLiteral(" dB"));
}

void ToneStrip::ToggleKill(app::ToneBand band) {
  Of(band).kill->click();
}

void ToneStrip::Show(const app::DeckView& view, support::TimePoint now) {
  now_ = now;
  const auto turn = [now](Knob& knob, SentEcho& echo, int value) {
    if (knob.isSliderDown() || !echo.Believe(float(value), now) || knob.value() == value) return;
    const QSignalBlocker quiet(knob);
    knob.setValue(value);
  };
  turn(*trim_, trim_echo_, view.trim);
  TellTrim();
  turn(*filter_, filter_echo_, view.effects.sliders[app::PlaceOf(app::EffectControl::Filter)]);
  TellFilter();
  for (const app::ToneBand band : kBands) {
    Band& shown = Of(band);
    turn(*shown.knob, shown.echo, view.tone[app::PlaceOf(band)]);
    const bool killed = view.killed[app::PlaceOf(band)];
    shown.knob->SetOut(killed);
    if (!shown.kill->isDown()) shown.kill->setChecked(killed);
    TellBand(band);
  }
}

}  // namespace ui
