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
#include "app/settings/Settings.h"
#include "ui/strings/ListWords.h"
#include "ui/widgets/Fader.h"
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

QLabel* Caption(const QString& text, const Look& look) {
  auto* label = new QLabel(text);
  SetTextColour(*label, look.skin.dim);
  return label;
}

}  // namespace

MixingPanel::MixingPanel(app::Decks& decks, app::ListStation& lists, app::Settings& settings,
                         decks::CrossfaderCurve curve, const Look& look, QWidget* parent)
    : QWidget(parent), decks_(decks), lists_(lists), settings_(settings) {
  const auto& say = look.say;
  auto* head = new QLabel(say(Say::Mixing));
  SetFontEm(*head, 1.3, Weight::Bold);
  curve_ = new QuietCombo(look.skin);
  for (const Say name : {Say::CurveSmooth, Say::CurveCut, Say::CurvePower}) curve_->addItem(say(name));
  curve_->setCurrentIndex(static_cast<int>(curve));
  Name(*curve_, QStringLiteral("CrossfaderCurve"), say(Say::Curve), say(Say::CurveTip));
  connect(curve_, &QComboBox::activated, this,
          [this](int index) { Q_EMIT CurveChosen(static_cast<decks::CrossfaderCurve>(index)); });

  sent_ = std::clamp(settings.Number("Settings", "GainPercent"), 0, 100);
  threshold_ = new Fader(Qt::Horizontal, look.skin, look.skin.text);
  threshold_->setRange(0, 100);
  threshold_->setPageStep(5);
  threshold_->setValue(sent_);
  Name(*threshold_, QStringLiteral("AutomationSlider1"), say(Say::MixThreshold), say(Say::MixThresholdTip));
  threshold_value_ = new QLabel(QString::number(sent_));
  Name(*threshold_value_, QStringLiteral("AutomationSlider1Value"), {});
  SetFontEm(*threshold_value_, 1.1, Weight::Bold);
  connect(threshold_, &QSlider::valueChanged, this, [this](int value) {
    SetText(*threshold_value_, QString::number(value));
    if (!threshold_->isSliderDown()) Send();
  });
  // Not at every step of the hand: each looks through the files on the decks again.
  connect(threshold_, &QSlider::sliderReleased, this, &MixingPanel::Send);

  stretch_ = new QuietCombo(look.skin);
  stretch_->addItems({say(Say::StretchBest), say(Say::StretchCheap)});
  stretch_->setCurrentIndex(settings.Flag("Settings", "LowPowerStretch") ? 1 : 0);
  Name(*stretch_, QStringLiteral("Stretch"), say(Say::Stretch), say(Say::StretchTip));
  connect(stretch_, &QComboBox::activated, this, [this](int index) {
    decks_.SetStretch(index == 1 ? decks::Stretch::LowPower : decks::Stretch::Best);
  });

  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0, 0.5);
  auto* line = new QHBoxLayout;
  SetSpacingEm(*line, 0, 0.5);
  line->addWidget(Caption(say(Say::MixThreshold), look), 1);
  line->addWidget(threshold_value_);
  rows->addWidget(head);
  rows->addLayout(line);
  rows->addWidget(threshold_);
  rows->addLayout(LayOutChoices(look));
  rows->addStretch(1);
}

QGridLayout* MixingPanel::LayOutChoices(const Look& look) {
  const auto& say = look.say;
  auto* sides = new QGridLayout;
  SetSpacingEm(*sides, 0, 0.4);
  auto* both_ranges = new QHBoxLayout;
  SetSpacingEm(*both_ranges, 0, 0.4);
  for (const int deck : {1, 2}) both_ranges->addWidget(MakeRange(deck, look), 1);
  sides->addWidget(Caption(say(Say::TempoRange).arg(QStringLiteral("1/2")), look), 1, 0);
  sides->addLayout(both_ranges, 1, 1);
  sides->addWidget(Caption(say(Say::Stretch), look), 2, 0);
  sides->addWidget(stretch_, 2, 1);
  sides->addWidget(Caption(say(Say::Curve), look), 0, 0);
  sides->addWidget(curve_, 0, 1);
  auto* automix = new QHBoxLayout;
  SetSpacingEm(*automix, 0, 0.4);
  automix->addWidget(MakeMixPlace(look), 1);
  automix->addWidget(MakeMixTime(look));
  sides->addWidget(Caption(say(ListWord::Automix), look), 3, 0);
  sides->addLayout(automix, 3, 1);
  auto* matches = new QHBoxLayout;
  SetSpacingEm(*matches, 0, 0.8);
  matches->addWidget(MakeMatch("AutoBPM", ListWord::MatchTempo, &app::ListStation::SetMatchTempo, look));
  matches->addWidget(MakeTempoReach(look));
  matches->addStretch(1);
  matches->addWidget(MakeMatch("AutoGain", ListWord::MatchGain, &app::ListStation::SetMatchGain, look));
  matches->addWidget(MakeGainRange(look));
  sides->addLayout(matches, 4, 0, 1, 2);
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
  auto* place = new QuietCombo(look.skin);
  place->addItems({look.say(ListWord::AtMixPoints), look.say(ListWord::BeforeTheEnd)});
  place->setCurrentIndex(settings_.Flag("Settings", "MixPoints") ? 0 : 1);
  Name(*place, QStringLiteral("MixPlace"), look.say(ListWord::MixPlace), look.say(ListWord::MixPlaceTip));
  connect(place, &QComboBox::activated, this, [this](int index) { lists_.SetAtMixPoints(index == 0); });
  return place;
}

QCheckBox* MixingPanel::MakeMatch(const char* name, ListWord caption, void (app::ListStation::*choose)(bool),
                                  const Look& look) {
  auto* match = new QCheckBox(look.say(caption));
  match->setChecked(settings_.Flag("Settings", name));
  Name(*match, QLatin1String(name), look.say(caption), look.say.Tip(caption));
  connect(match, &QCheckBox::toggled, this, [this, choose](bool chosen) { (lists_.*choose)(chosen); });
  return match;
}

QuietCombo* MixingPanel::MakeMixTime(const Look& look) {
  const int chosen = std::clamp(settings_.Number("Mixer", "MixTime"), 0, 60);
  auto* time = MakeNumbers(QStringLiteral("%1 s"), {0, 2, 4, 6, 8, 10, 12, 15, 20, 30}, chosen, look);
  Name(*time, QStringLiteral("MixTime"), look.say(ListWord::MixTime), look.say(ListWord::MixTimeTip));
  connect(time, &QComboBox::activated, this,
          [this, time] { lists_.SetMixTime(time->currentData().toInt()); });
  return time;
}

QuietCombo* MixingPanel::MakeTempoReach(const Look& look) {
  const int chosen = std::clamp(settings_.Number("Settings", "BPMPercent"), 0, 50);
  auto* reach = MakeNumbers(QStringLiteral("± %1 %"), {2, 4, 6, 8, 10, 12, 16, 25, 50}, chosen, look);
  Name(*reach, QStringLiteral("BPMPercent"), look.say(ListWord::TempoReach),
       look.say(ListWord::TempoReachTip));
  connect(reach, &QComboBox::activated, this,
          [this, reach] { lists_.SetTempoReach(reach->currentData().toInt()); });
  return reach;
}

QuietCombo* MixingPanel::MakeGainRange(const Look& look) {
  const int chosen = std::clamp(settings_.Number("Settings", "GainRange"), 0, 24);
  auto* range = MakeNumbers(QStringLiteral("± %1 dB"), {3, 6, 9, 12, 18, 24}, chosen, look);
  Name(*range, QStringLiteral("GainRange"), look.say(ListWord::GainRange), look.say(ListWord::GainRangeTip));
  connect(range, &QComboBox::activated, this,
          [this, range] { lists_.SetGainRange(range->currentData().toInt()); });
  return range;
}

QCheckBox* MixingPanel::MakeSeekGuard(const Look& look) {
  auto* guard = new QCheckBox(look.say(Say::SeekGuard));
  guard->setChecked(settings_.Flag("Mixer", "SeekGuard"));
  Name(*guard, QStringLiteral("SeekGuard"), look.say(Say::SeekGuard), look.say(Say::SeekGuardTip));
  connect(guard, &QCheckBox::toggled, this,
          [this](bool guarded) { settings_.SetFlag("Mixer", "SeekGuard", guarded); });
  return guard;
}

void MixingPanel::Send() {
  if (threshold_->value() == sent_) return;
  sent_ = threshold_->value();
  decks_.SetGainPercent(sent_);
}

}  // namespace ui
