// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MixingPanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "app/Decks.h"
#include "app/lists/ListStation.h"
#include "support/Settings.h"
#include "ui/forms/AutomixChoices.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {

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
  automix_ = new AutomixChoices({}, lists_, AutomixChoices::Form::Lines, look);
  sides->addWidget(automix_, 3, 0, 1, 2);
  sides->addWidget(MakeSeekGuard(look), 4, 0, 1, 2);
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

QCheckBox* MixingPanel::MakeSeekGuard(const Look& look) {
  return Check("SeekGuard", look.say.Of(Say::SeekGuard), settings_.Flag("Mixer", "SeekGuard"),
               [this](bool guarded) { settings_.SetFlag("Mixer", "SeekGuard", guarded); });
}

void MixingPanel::Show() {
  automix_->Show(lists_.View().automix);
}

void MixingPanel::Send() {
  if (threshold_->value() == sent_) return;
  sent_ = threshold_->value();
  decks_.SetGainPercent(sent_);
}

}  // namespace ui
