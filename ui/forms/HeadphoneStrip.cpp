// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/HeadphoneStrip.h"

#include <QGridLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <cmath>

#include "app/HeadphoneStation.h"
#include "app/WorkstationView.h"
#include "ui/strings/DeskWords.h"
#include "ui/strings/Say.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/Knob.h"

namespace ui {
namespace {

void SetTip(QWidget& widget, const QString& tip) {
  if (widget.toolTip() != tip) widget.setToolTip(tip);
}

int PercentOf(float part) {
  return static_cast<int>(std::lround(part * 100));
}

}  // namespace

HeadphoneStrip::HeadphoneStrip(app::HeadphoneStation& headphones, const Look& look, QWidget* parent)
    : QWidget(parent),
      headphones_(headphones),
      look_(look),
      mix_(new Knob(0, 100, 0, look.skin, look.skin.text)),
      level_(new Knob(0, 100, 100, look.skin, look.skin.text)) {
  const auto& say = look.say;
  Name(*mix_, "HeadphoneMix", say(DeskWord::HeadphoneMixName), {});
  Name(*level_, "HeadphoneLevel", say(DeskWord::HeadphoneLevelName), {});
  split_ = Lamp(
      "HeadphoneSplit",
      {say(DeskWord::HeadphoneSplit), say(DeskWord::HeadphoneSplitName), say(DeskWord::HeadphoneSplitTip)},
      [this](bool on) { headphones_.SetSplit(on); });
  connect(mix_, &QSlider::valueChanged, this, [this](int percent) {
    mix_echo_.Sent(float(percent), now_);
    headphones_.SetProgramme(percent);
    TellTips();
  });
  connect(level_, &QSlider::valueChanged, this, [this](int percent) {
    level_echo_.Sent(float(percent), now_);
    headphones_.SetLevel(percent);
    TellTips();
  });
  auto* grid = new QGridLayout(this);
  SetSpacingEm(*grid, 0, 0.3);
  grid->addWidget(mix_, 0, 0, Qt::AlignHCenter);
  grid->addWidget(split_, 0, 1);
  grid->addWidget(level_, 0, 2, Qt::AlignHCenter);
  grid->addWidget(Caption(say(DeskWord::HeadphoneMix), look.skin.dim), 1, 0, Qt::AlignHCenter);
  grid->addWidget(Caption(say(DeskWord::HeadphoneLevel), look.skin.dim), 1, 2, Qt::AlignHCenter);
  TellTips();
}

void HeadphoneStrip::TellTips() {
  const auto& say = look_.say;
  const auto tip = [&](const QString& own) {
    return !device_ ? say(Say::CueNoDevice) : !hall_ ? say(DeskWord::HallUnheard) : own;
  };
  SetTip(*mix_, tip(say(DeskWord::HeadphoneMixTip).arg(mix_->value())));
  SetTip(*split_, tip(say(DeskWord::HeadphoneSplitTip)));
  SetTip(*level_, device_ ? say(DeskWord::HeadphoneLevelTip).arg(level_->value()) : say(Say::CueNoDevice));
}

void HeadphoneStrip::Show(const app::WorkstationView& view, support::TimePoint now) {
  now_ = now;
  device_ = view.outputs[2].device != 0;
  hall_ = view.headphones.hear_hall;
  const auto turn = [now](Knob& knob, SentEcho& echo, float part) {
    const int percent = PercentOf(part);
    if (knob.isSliderDown() || !echo.Believe(float(percent), now) || knob.value() == percent) return;
    const QSignalBlocker quiet(knob);
    knob.setValue(percent);
  };
  turn(*mix_, mix_echo_, view.headphones.mix.programme);
  turn(*level_, level_echo_, view.headphones.mix.level);
  mix_->setEnabled(device_ && hall_ && !view.headphones.mix.split);
  split_->setEnabled(device_ && hall_);
  level_->setEnabled(device_);
  if (!split_->isDown()) split_->setChecked(view.headphones.mix.split);
  TellTips();
}

}  // namespace ui
