// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MicrophoneStrip.h"

#include "app/sound/MicrophoneStation.h"
#include "ui/models/KeyMap.h"
#include "ui/strings/Decode.h"
#include "ui/strings/MicrophoneWords.h"
#include "ui/widgets/HoldButton.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/LevelBar.h"

namespace ui {
namespace {

constexpr float kTooLoud = -0.5F;  ///< dB of what comes in
constexpr auto kStaysLit = std::chrono::seconds(3);

}  // namespace

MicrophoneStrip::MicrophoneStrip(app::MicrophoneStation& station, const Look& look, QWidget* parent)
    : QWidget(parent), station_(station), look_(look), level_(new LevelBar(look.skin, 4)) {
  const auto& say = look.say;
  on_ = Lamp(
      "Microphone", say.ByTip(MicrophoneWord::Mic, MicrophoneWord::Microphone),
      [this](bool on) { station_.Switch(on); }, "alarm");
  SetFontEm(*on_, 1.2, Weight::Bold);
  Name(*level_, "MicrophoneLevel", say(MicrophoneWord::MicLevel), say(MicrophoneWord::MicLevel));
  talk_ = new HoldButton(say(MicrophoneWord::Talk));
  SetKind(*talk_, "alarm");
  Name(*talk_, "TalkOver", say(MicrophoneWord::Talk),
       say(Say::KeyHint).arg(say.Tip(MicrophoneWord::Talk), KeyText(KeyOfTalking())));
  connect(talk_, &HoldButton::Held, this, [this](bool held) { station_.TalkOver(held || by_key_); });
  FillRow(*this, 0, 0.4, {on_, level_, talk_});
  // The texts beside it give way.
  for (QWidget* part :
       {static_cast<QWidget*>(on_), static_cast<QWidget*>(talk_), static_cast<QWidget*>(this)}) {
    part->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  }
}

MicrophoneStrip::~MicrophoneStrip() {
  // Nobody could let go of it any more.
  if (talk_->IsHeld()) station_.TalkOver(by_key_);
}

void MicrophoneStrip::Toggle() {
  if (on_->isEnabled()) on_->click();
}

void MicrophoneStrip::Talk(bool held) {
  by_key_ = held;
  station_.TalkOver(by_key_ || talk_->IsHeld());
}

void MicrophoneStrip::ShowSwitch(const app::MicrophoneView& view) {
  const auto& say = look_.say;
  for (QPushButton* button : {on_, static_cast<QPushButton*>(talk_)}) button->setEnabled(view.there);
  if (!on_->isDown() && on_->isChecked() != view.wish.on) on_->setChecked(view.wish.on);
  if (!talk_->IsHeld() && talk_->isDown() != view.wish.talk_over) talk_->setDown(view.wish.talk_over);
  // A lamp that is lit while nobody is heard says so.
  const bool mute = view.wish.on && !view.trouble.empty();
  const QString caption = (mute ? QStringLiteral("✕ ") : QStringLiteral("● ")) + say(MicrophoneWord::Mic);
  if (on_->text() != caption) on_->setText(caption);
  const QString tip = !view.there ? say(MicrophoneWord::NotPossible)
                      : mute
                          ? Decode(view.trouble)
                          : say(Say::KeyHint).arg(say.Tip(MicrophoneWord::Mic), KeyText(KeyOfMicrophone()));
  if (on_->toolTip() != tip) on_->setToolTip(tip);
}

void MicrophoneStrip::Show(support::TimePoint now) {
  const app::MicrophoneView& view = station_.View();
  ShowSwitch(view);
  if (view.now.input >= kTooLoud) overloaded_ = now + kStaysLit;
  level_->Show({view.now.input, view.now.level}, now < overloaded_);
}

}  // namespace ui
