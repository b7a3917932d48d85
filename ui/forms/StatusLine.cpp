// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/StatusLine.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTime>
#include <algorithm>
#include <cmath>

#include "ui/models/OutputText.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/ElidedLabel.h"

namespace ui {
namespace {

constexpr auto kMessageTime = std::chrono::seconds(10);  ///< bright; then dim until the next one
constexpr double kForNew = 0.45;                         ///< most of the line for a new message
constexpr double kForOld = 0.2;
constexpr auto kLateTime = std::chrono::seconds(15);  ///< that a late block is pointed out

}  // namespace

StatusLine::StatusLine(const Look& look, QWidget* parent) : Surface(look.skin.panel, parent), look_(look) {
  setObjectName(QStringLiteral("StatusLine"));
  auto* row = new QHBoxLayout(this);
  SetSpacingEm(*row, 0.3, 1.2);
  const auto& say = look.say;
  clock_ = new QLabel;
  SetFontEm(*clock_, 1.9, Weight::Bold);
  Name(*clock_, QStringLiteral("Clock"), {}, say(Say::ClockTip));
  row->addWidget(clock_);
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    outputs_[i] = new ElidedLabel(ElidedLabel::Width::Natural);
    Name(*outputs_[i], QStringLiteral("Output%1").arg(i + 1), {});
    row->addWidget(outputs_[i]);
    returns_[i] = MakeReturn(static_cast<int>(i) + 1);
    row->addWidget(returns_[i]);
  }
  message_ = new ElidedLabel;
  message_->UseTwoLines();
  Name(*message_, QStringLiteral("Message"), {});
  row->addWidget(message_, 1);
  load_ = new QLabel;
  Name(*load_, QStringLiteral("SoundLoad"), {}, say(Say::SoundLoadTip));
  late_ = new QLabel;
  Name(*late_, QStringLiteral("LateBlocks"), {}, say(Say::LateBlocksTip));
  SetTextColour(*load_, look.skin.dim);
  SetTextColour(*late_, look.skin.dim);
  unsaved_ = new QLabel(say(Say::Unsaved));
  Name(*unsaved_, QStringLiteral("Unsaved"), {});
  SetTextColour(*unsaved_, look.skin.warning);
  unsaved_->hide();
  row->addWidget(unsaved_);
  lights_ = new QLabel;
  Name(*lights_, QStringLiteral("DmxState"), {}, say(Say::DmxTip));
  lights_->hide();
  row->addWidget(lights_);
  row->addWidget(load_);
  row->addWidget(late_);
  Show({}, {}, {});
}

void StatusLine::Show(const app::WorkstationView& view, const std::vector<std::string>& devices,
                      support::TimePoint now) {
  const auto& say = look_.say;
  const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm"));
  SetText(*clock_, time);
  const QString names[] = {say(Say::OutputDeck).arg(1), say(Say::OutputDeck).arg(2),
                           say(Say::OutputHeadphones)};
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    outputs_[i]->Show(say(Say::OutputOf).arg(names[i], OutputText(view.outputs[i], devices, say)));
    if (returns_[i]->isVisibleTo(this) != view.can_return[i]) returns_[i]->setVisible(view.can_return[i]);
    const bool mute = view.outputs[i].device == 0;
    SetTextColour(*outputs_[i], i == 2 ? look_.skin.dim : mute ? look_.skin.warning : look_.skin.decks[i]);
  }
  if (view.notice != notice_) {
    notice_ = view.notice;
    Tell(Decode(notice_));
  }
  if (unsaved_->isVisibleTo(this) == view.unsaved.empty()) unsaved_->setVisible(!view.unsaved.empty());
  const QString unsaved = say(Say::UnsavedTip).arg(Decode(view.unsaved));
  if (!view.unsaved.empty() && unsaved_->toolTip() != unsaved) unsaved_->setToolTip(unsaved);
  if (fresh_) told_at_ = now;
  fresh_ = false;
  const bool bright = now - told_at_ < kMessageTime;
  SetTextColour(*message_, bright ? look_.skin.warning : look_.skin.dim);
  // The names of the outputs give way to what is new.
  const int wanted = message_->sizeHint().width();
  message_->setMinimumWidth(std::min(wanted, static_cast<int>(width() * (bright ? kForNew : kForOld))));
  ShowHealth(view.health, now);
}

QPushButton* StatusLine::MakeReturn(int output) {
  const auto& say = look_.say;
  const QString name = output == 3 ? say(Say::OutputHeadphones) : say(Say::OutputDeck).arg(output);
  auto* button = new QPushButton(say(Say::ReturnOutput));
  SetKind(*button, "tool");
  Name(*button, QStringLiteral("Return%1").arg(output), say(Say::ReturnOutputName).arg(name),
       say(Say::ReturnOutputTip));
  connect(button, &QPushButton::clicked, this, [this, output] { Q_EMIT ReturnWanted(output); });
  button->hide();
  return button;
}

void StatusLine::ShowLights(const app::LightView& lights) {
  if (lights_->isVisibleTo(this) != lights.output_on) lights_->setVisible(lights.output_on);
  if (!lights.output_on) return;
  const bool sends = lights.status.state == dmx::DmxInterfaceStatus::State::Sending;
  SetText(*lights_, look_.say(!sends ? Say::DmxNoBox : lights.blackout ? Say::DmxDark : Say::DmxSends));
  SetTextColour(*lights_, sends && !lights.blackout ? look_.skin.dim : look_.skin.warning);
  const QString tip = sends || lights.trouble.empty() ? look_.say(Say::DmxTip) : Decode(lights.trouble);
  if (lights_->toolTip() != tip) lights_->setToolTip(tip);
}

void StatusLine::ShowHealth(const decks::EngineHealth& health, support::TimePoint now) {
  const long percent = std::lround(std::clamp(health.load, 0.0F, 9.99F) * 100);
  SetText(*load_, look_.say(Say::SoundLoad).arg(percent));
  SetText(*late_, look_.say(Say::LateBlocks).arg(health.late_blocks));
  if (health.late_blocks > late_blocks_) {
    was_late_ = true;
    late_at_ = now;
  }
  late_blocks_ = health.late_blocks;
  if (was_late_ && now - late_at_ > kLateTime) was_late_ = false;
  SetTextColour(*late_, was_late_ ? look_.skin.warning : look_.skin.dim);
}

void StatusLine::Tell(const QString& message) {
  message_->Show(message);
  fresh_ = true;
}

QString StatusLine::Message() const {
  return message_->text();
}

}  // namespace ui
