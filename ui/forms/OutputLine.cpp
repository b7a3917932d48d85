// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/OutputLine.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <cmath>

#include "ui/forms/MessageBoxes.h"
#include "ui/forms/NetChoices.h"
#include "ui/models/KeyMap.h"
#include "ui/strings/ConsoleWords.h"
#include "ui/strings/Decode.h"
#include "ui/strings/NetWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

using InterfaceState = dmx::DmxInterfaceStatus::State;

void Check(QPushButton& button, bool checked) {
  if (button.isChecked() != checked) button.setChecked(checked);
}

}  // namespace

OutputLine::OutputLine(app::LightStation& lights, MessageBoxes& boxes, const Look& look, QWidget* parent)
    : QWidget(parent), lights_(lights), boxes_(boxes), look_(look) {
  output_ = Lamp("K8062", look_.say.Of(ConsoleWord::Output));
  output_->setText(look.say(ConsoleWord::SwitchedOff));
  connect(output_, &QPushButton::clicked, this, [this](bool on) {
    lights_.TurnOutput(on ? app::LightStation::Output::On : app::LightStation::Output::Off);
  });
  box_ = new QLabel;
  box_->setToolTip(look.say(ConsoleWord::BoxTip));
  Name(*box_, "BoxState", look.say(ConsoleWord::BoxTip));
  status_ = new ElidedLabel;
  status_->UseTwoLines();
  Name(*status_, "OutputStatus");
  blackout_ = Lamp("Blackout", look_.say.Of(ConsoleWord::Blackout), {}, "alarm");
  blackout_->setToolTip(
      look.say(Say::KeyHint).arg(look.say(ConsoleWord::BlackoutTip), KeyText(KeyOfBlackout())));
  connect(blackout_, &QPushButton::clicked, this, [this](bool on) {
    lights_.SetBlackout(on ? dmx::OutputStage::Blackout::On : dmx::OutputStage::Blackout::Off);
  });
  guard_ = Lamp("StrobeGuard", look_.say.Of(ConsoleWord::Guard), [this](bool on) {
    if (on) return lights_.SetFlashGuard(dmx::OutputStage::FlashGuard::On);
    AskToLiftGuard();
  });
  if (lights.HasNet()) net_ = new NetChoices(lights, look);
  FillRow(*this, 0, 0.6, {output_, net_, box_, {status_, 1}, blackout_, guard_});
}

void OutputLine::AskToLiftGuard() {
  guard_->setChecked(true);  // until it was agreed to
  boxes_.Ask(QStringLiteral("StrobeGuardBox"), look_.say(ConsoleWord::GuardAsk),
             look_.say(ConsoleWord::GuardLift), [line = QPointer(this)] {
               if (!line.isNull()) line->lights_.SetFlashGuard(dmx::OutputStage::FlashGuard::Lifted);
             });
}

void OutputLine::Measure(const dmx::DmxInterfaceStatus& status, support::TimePoint now) {
  constexpr auto kSecond = std::chrono::seconds(1);
  if (status.state != InterfaceState::Sending || second_ == support::TimePoint()) {
    rate_ = 0;
    frames_ = status.frames;
    second_ = now;
  } else if (now - second_ >= kSecond) {
    const double seconds = std::chrono::duration<double>(now - second_).count();
    rate_ = static_cast<int>(std::lround(static_cast<double>(status.frames - frames_) / seconds));
    frames_ = status.frames;
    second_ = now;
  }
}

QString OutputLine::StatusText(const app::LightView& view) const {
  const auto& say = look_.say;
  if (!view.trouble.empty()) return Decode(view.trouble);
  switch (view.status.state) {
    case InterfaceState::Sending:
      if (!view.output_on) return say(ConsoleWord::OffButSent);
      return rate_ == 0 ? QString() : say.Count(ConsoleWord::OutputRate, rate_);
    case InterfaceState::Searching:
      return say(ConsoleWord::OutputStarting);
    case InterfaceState::Stopped:
      break;
  }
  if (!view.output_on) return say(ConsoleWord::OutputOff);
  return say(view.has_interface ? ConsoleWord::OutputStarting : ConsoleWord::OutputNone);
}

/// A box that takes no frames is found, and no more.
void OutputLine::ShowBox(const app::LightView& view) {
  const auto& say = look_.say;
  const bool there = view.status.state == InterfaceState::Sending;
  const bool missing = view.status.state == InterfaceState::Searching || (view.output_on && !there);
  box_->setVisible(there || missing);
  if (there) SetText(*box_, say(rate_ > 0 ? ConsoleWord::BoxSends : ConsoleWord::BoxFound));
  if (missing) SetText(*box_, say(ConsoleWord::BoxMissing));
  SetTextColour(*box_, missing ? look_.skin.warning : look_.skin.text);
}

void OutputLine::Show(const app::LightView& view, support::TimePoint now) {
  Check(*output_, view.output_on);
  const bool net = net_ != nullptr && net_->Sends();
  const QString caption =
      net ? look_.say(view.output_on ? NetWord::DmxSwitchedOn : NetWord::DmxSwitchedOff)
          : look_.say(view.output_on ? ConsoleWord::SwitchedOn : ConsoleWord::SwitchedOff);
  if (output_->text() != caption) output_->setText(caption);
  Check(*blackout_, view.blackout);
  Check(*guard_, view.flash_guard);
  Measure(view.status, now);
  ShowBox(view);
  status_->Show(StatusText(view));
  const bool trouble = !view.trouble.empty() || (view.output_on && !view.has_interface);
  SetTextColour(*status_, trouble ? look_.skin.warning : look_.skin.dim);
}

}  // namespace ui
