// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MixingPanel.h"

#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/widgets/Fader.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {

MixingPanel::MixingPanel(app::Workstation& workstation, decks::CrossfaderCurve curve, const Look& look,
                         QWidget* parent)
    : QWidget(parent), workstation_(workstation) {
  const auto& say = look.say;
  auto* head = new QLabel(say(Say::Mixing));
  SetFontEm(*head, 1.3, Weight::Bold);
  curve_ = new QuietCombo(look.skin);
  for (const Say name : {Say::CurveSmooth, Say::CurveCut, Say::CurvePower}) curve_->addItem(say(name));
  curve_->setCurrentIndex(static_cast<int>(curve));
  Name(*curve_, QStringLiteral("CrossfaderCurve"), say(Say::Curve), say(Say::CurveTip));
  connect(curve_, &QComboBox::activated, this,
          [this](int index) { Q_EMIT CurveChosen(static_cast<decks::CrossfaderCurve>(index)); });

  sent_ = std::clamp(workstation.Settings().Number("Settings", "GainPercent"), 0, 100);
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

  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0, 0.5);
  const auto caption = [&](Say text) {
    auto* label = new QLabel(say(text));
    SetTextColour(*label, look.skin.dim);
    return label;
  };
  auto* line = new QHBoxLayout;
  SetSpacingEm(*line, 0, 0.5);
  line->addWidget(caption(Say::MixThreshold), 1);
  line->addWidget(threshold_value_);
  rows->addWidget(head);
  rows->addWidget(caption(Say::Curve));
  rows->addWidget(curve_);
  rows->addLayout(line);
  rows->addWidget(threshold_);
  rows->addStretch(1);
}

void MixingPanel::Send() {
  if (threshold_->value() == sent_) return;
  sent_ = threshold_->value();
  workstation_.SetGainPercent(sent_);
}

}  // namespace ui
