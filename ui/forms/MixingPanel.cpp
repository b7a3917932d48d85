// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MixingPanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <set>

#include "app/Decks.h"
#include "app/lists/ListStation.h"
#include "support/Settings.h"
#include "ui/strings/ListWords.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {

namespace {

/// A list of numbers to choose from, and the chosen one whether it is among them or not.
QuietCombo* MakeNumbers(const QString& text, std::set<int> numbers, int chosen, const Look& look) {
  auto* list = new QuietCombo(look.skin);
  numbers.insert(chosen);
  for (const int each : numbers) list->addItem(text.arg(each), each);
  list->setCurrentIndex(list->findData(chosen));
  return list;
}

}  // namespace

MixingPanel::MixingPanel(app::Decks& decks, app::ListStation& lists, support::Settings& settings,
                         decks::CrossfaderCurve curve, const Look& look, QWidget* parent)
    : QWidget(parent), decks_(decks), lists_(lists), settings_(settings) {
  const auto& say = look.say;
  curve_ = new QuietCombo(look.skin);
  for (const Say name : {Say::CurveSmooth, Say::CurveCut, Say::CurvePower}) curve_->addItem(say(name));
  curve_->setCurrentIndex(static_cast<int>(curve));
  Name(*curve_, "CrossfaderCurve", say.Of(Say::Curve));
  connect(curve_, &QComboBox::activated, this,
          [this](int index) { Q_EMIT CurveChosen(static_cast<decks::CrossfaderCurve>(index)); });

  sent_ = std::clamp(settings.Number("Settings", "GainPercent"), 0, 100);
  threshold_ = new Fader(Qt::Horizontal, look.skin, look.skin.text);
  threshold_->setRange(0, 100);
  threshold_->setPageStep(5);
  threshold_->setValue(sent_);
  Name(*threshold_, "AutomationSlider1", say.Of(Say::MixThreshold));
  threshold_value_ = new QLabel(QString::number(sent_));
  Name(*threshold_value_, "AutomationSlider1Value");
  SetFontEm(*threshold_value_, 1.1, Weight::Bold);
  connect(threshold_, &QSlider::valueChanged, this, [this](int value) {
    SetText(*threshold_value_, QString::number(value));
    if (!threshold_->isSliderDown()) Send();
  });
  // Not at every step of the hand: each looks through the files on the decks again.
  connect(threshold_, &QSlider::sliderReleased, this, &MixingPanel::Send);

  stretch_ = Choice(
      look.skin, "Stretch", say.Of(Say::Stretch), {say(Say::StretchBest), say(Say::StretchCheap)},
      settings.Flag("Settings", "LowPowerStretch") ? 1 : 0,
      [this](int index) { decks_.SetStretch(index == 1 ? decks::Stretch::LowPower : decks::Stretch::Best); });
  FillColumn(*this, 0, 0.5,
             {Heading(say(Say::Mixing)),
              Row(0.5, {{Caption(say(Say::MixThreshold), look.skin.dim), 1}, threshold_value_}), threshold_,
              LayOutChoices(look), Part::Room()});
}

QGridLayout* MixingPanel::LayOutChoices(const Look& look) {
  const auto& say = look.say;
  auto* sides = new QGridLayout;
  SetSpacingEm(*sides, 0, 0.4);
  auto* both_ranges = new QHBoxLayout;
  SetSpacingEm(*both_ranges, 0, 0.4);
  for (const int deck : {1, 2}) both_ranges->addWidget(MakeRange(deck, look), 1);
  sides->addWidget(Caption(say(Say::TempoRange).arg(QStringLiteral("1/2")), look.skin.dim), 1, 0);
  sides->addLayout(both_ranges, 1, 1);
  sides->addWidget(Caption(say(Say::Stretch), look.skin.dim), 2, 0);
  sides->addWidget(stretch_, 2, 1);
  sides->addWidget(Caption(say(Say::Curve), look.skin.dim), 0, 0);
  sides->addWidget(curve_, 0, 1);
  sides->addWidget(Caption(say(ListWord::Automix), look.skin.dim), 3, 0);
  sides->addLayout(Row(0.4, {{MakeMixPlace(look), 1}, MakeMixTime(look)}), 3, 1);
  sides->addLayout(
      Row(0.8, {MakeMatch("AutoBPM", ListWord::MatchTempo, &app::ListStation::SetMatchTempo, look),
                MakeTempoReach(look), Part::Room(),
                MakeMatch("AutoGain", ListWord::MatchGain, &app::ListStation::SetMatchGain, look),
                MakeGainRange(look)}),
      4, 0, 1, 2);
  sides->addWidget(MakeSeekGuard(look), 5, 0, 1, 2);
  sides->setColumnStretch(0, 1);
  return sides;
}

QuietCombo* MixingPanel::MakeRange(int deck, const Look& look) {
  auto* range = new QuietCombo(look.skin);
  for (const int percent : app::kTempoRanges) {
    range->addItem(QStringLiteral("± %1 %").arg(percent), percent);
  }
  const int chosen = decks_[deck].View().tempo_range;
  range->setCurrentIndex(range->findData(chosen));
  Name(*range, DeckName(deck, "TempoRange"), look.say(Say::TempoRange).arg(deck),
       look.say(Say::TempoRangeTip));
  connect(range, &QComboBox::activated, this,
          [this, deck, range] { decks_[deck].SetTempoRange(range->currentData().toInt()); });
  return range;
}

QuietCombo* MixingPanel::MakeMixPlace(const Look& look) {
  return Choice(look.skin, "MixPlace", look.say.Of(ListWord::MixPlace),
                {look.say(ListWord::AtMixPoints), look.say(ListWord::BeforeTheEnd)},
                settings_.Flag("Settings", "MixPoints") ? 0 : 1,
                [this](int index) { lists_.SetAtMixPoints(index == 0); });
}

QCheckBox* MixingPanel::MakeMatch(const char* name, ListWord caption, void (app::ListStation::*choose)(bool),
                                  const Look& look) {
  return Check(name, {look.say(caption), look.say(caption), look.say.Tip(caption)},
               settings_.Flag("Settings", name), [this, choose](bool chosen) { (lists_.*choose)(chosen); });
}

QuietCombo* MixingPanel::MakeMixTime(const Look& look) {
  const int chosen = std::clamp(settings_.Number("Mixer", "MixTime"), 0, 60);
  auto* time = MakeNumbers(QStringLiteral("%1 s"), {0, 2, 4, 6, 8, 10, 12, 15, 20, 30}, chosen, look);
  Name(*time, "MixTime", look.say.Of(ListWord::MixTime));
  connect(time, &QComboBox::activated, this,
          [this, time] { lists_.SetMixTime(time->currentData().toInt()); });
  return time;
}

QuietCombo* MixingPanel::MakeTempoReach(const Look& look) {
  const int chosen = std::clamp(settings_.Number("Settings", "BPMPercent"), 0, 50);
  auto* reach = MakeNumbers(QStringLiteral("± %1 %"), {2, 4, 6, 8, 10, 12, 16, 25, 50}, chosen, look);
  Name(*reach, "BPMPercent", look.say.Of(ListWord::TempoReach));
  connect(reach, &QComboBox::activated, this,
          [this, reach] { lists_.SetTempoReach(reach->currentData().toInt()); });
  return reach;
}

QuietCombo* MixingPanel::MakeGainRange(const Look& look) {
  const int chosen = std::clamp(settings_.Number("Settings", "GainRange"), 0, 24);
  auto* range = MakeNumbers(QStringLiteral("± %1 dB"), {3, 6, 9, 12, 18, 24}, chosen, look);
  Name(*range, "GainRange", look.say.Of(ListWord::GainRange));
  connect(range, &QComboBox::activated, this,
          [this, range] { lists_.SetGainRange(range->currentData().toInt()); });
  return range;
}

QCheckBox* MixingPanel::MakeSeekGuard(const Look& look) {
  return Check("SeekGuard", look.say.Of(Say::SeekGuard), settings_.Flag("Mixer", "SeekGuard"),
               [this](bool guarded) { settings_.SetFlag("Mixer", "SeekGuard", guarded); });
}

void MixingPanel::Send() {
  if (threshold_->value() == sent_) return;
  sent_ = threshold_->value();
  decks_.SetGainPercent(sent_);
}

}  // namespace ui
