// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/TempoTools.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <algorithm>
#include <cmath>

#include "app/Deck.h"
#include "app/sound/DeckStation.h"
#include "ui/models/DeckChoice.h"
#include "ui/strings/KeyWords.h"

namespace ui {
namespace {

constexpr float kNudge = 2;      ///< percent
constexpr float kMostPitch = 6;  ///< semitones, by the buttons
constexpr auto kGridStep = std::chrono::milliseconds(5);

QString PitchText(float semitones) {
  const int whole = static_cast<int>(std::lround(semitones));
  return whole == 0  ? QStringLiteral("0")
         : whole > 0 ? QStringLiteral("+%1").arg(whole)
                     : QStringLiteral("−%1").arg(-whole);
}

/// "+2.3 dB"
QString GainText(float gain) {
  const double tenths = std::round(double(gain) * 10) / 10;
  const QString sign = tenths < 0   ? QStringLiteral("−")
                       : tenths > 0 ? QStringLiteral("+")
                                    : QStringLiteral("±");
  return sign + QString::number(std::abs(tenths), 'f', 1) + QStringLiteral(" dB");
}

}  // namespace

TempoTools::TempoTools(app::Deck& deck, const Look& look, QWidget* parent)
    : QWidget(parent), deck_(deck.Number()), commands_(deck), look_(look) {
  auto* row = new QHBoxLayout(this);
  SetSpacingEm(*row, 0, 0.3);
  back_ =
      MakeNudge({"NudgeBack", Say::NudgeBackSign, Say::NudgeBack, Say::NudgeBackTip}, Command::NudgeBack, -1);
  on_ = MakeNudge({"NudgeOn", Say::NudgeOnSign, Say::NudgeOn, Say::NudgeOnTip}, Command::NudgeOn, 1);
  for (QPushButton* button : {back_, on_}) row->addWidget(button);
  sync_ = MakeButton({"Sync", Say::Sync, Say::SyncName, Say::SyncTip}, Kind::Lamp);
  AddKey(*sync_, Command::Sync);
  connect(sync_, &QPushButton::clicked, this, &TempoTools::ToggleSync);
  tap_ = MakeButton({"Tap", Say::Tap, Say::TapName, Say::TapTip});
  AddKey(*tap_, Command::Tap);
  connect(tap_, &QPushButton::pressed, this, &TempoTools::Tap);
  beats_ = MakeButton({"Beats", Say::Beats, Say::BeatsName, Say::BeatsTip});
  beats_->setMenu(MakeBeats());
  earlier_ = MakeButton({"GridEarlier", Say::GridEarlierSign, Say::GridEarlier, Say::GridEarlierTip});
  later_ = MakeButton({"GridLater", Say::GridLaterSign, Say::GridLater, Say::GridLaterTip});
  for (QPushButton* button : {earlier_, later_}) {
    button->setAutoRepeat(true);
    connect(button, &QPushButton::clicked, this, [this, later = button == later_] {
      commands_.Adjust(&app::DeckTempo::Shift, later ? kGridStep : -kGridStep);
    });
  }
  for (QPushButton* button : {sync_, tap_, beats_, earlier_, later_}) row->addWidget(button);
  row->addWidget(MakeGain());
  row->addStretch(1);

  key_lock_ = MakeButton({"KeyLock", Say::KeyLock, Say::KeyLockName, Say::KeyLockTip}, Kind::Lamp);
  AddKey(*key_lock_, Command::KeyLock);
  connect(key_lock_, &QPushButton::clicked, this, &TempoTools::ToggleKeyLock);
  auto* lower = MakeButton({"PitchDown", Say::PitchDownSign, Say::PitchDown, Say::PitchTip});
  auto* higher = MakeButton({"PitchUp", Say::PitchUpSign, Say::PitchUp, Say::PitchTip});
  connect(lower, &QPushButton::clicked, this, [this] { MovePitch(view_.pitch - 1); });
  connect(higher, &QPushButton::clicked, this, [this] { MovePitch(view_.pitch + 1); });
  pitch_ = new QLabel(PitchText(0));
  pitch_->setAlignment(Qt::AlignCenter);
  SetWidest(*pitch_, QStringLiteral("−12"));
  Name(*pitch_, DeckName(deck_, "Pitch"), {}, look_.say(Say::PitchTip));
  row->addWidget(key_lock_);
  row->addWidget(lower);
  row->addWidget(pitch_);
  row->addWidget(higher);
}

QPushButton* TempoTools::MakeButton(const Words& words, Kind kind) {
  auto* button = new QPushButton(look_.say(words.caption));
  const bool lamp = kind == Kind::Lamp;
  SetKind(*button, lamp ? deck_ == 1 ? "lamp1" : "lamp2" : "tool");
  button->setCheckable(lamp);
  Name(*button, DeckName(deck_, words.name), look_.say(words.spoken).arg(deck_), look_.say(words.tip));
  return button;
}

void TempoTools::AddKey(QPushButton& button, Command command) {
  button.setToolTip(look_.say(Say::KeyHint).arg(button.toolTip(), KeyText(KeyOf(command, deck_))));
}

QPushButton* TempoTools::MakeNudge(const Words& words, Command key, int direction) {
  QPushButton* button = MakeButton(words);
  AddKey(*button, key);
  connect(button, &QPushButton::pressed, this, [this, direction] { Nudge(direction); });
  connect(button, &QPushButton::released, this, [this] { Nudge(0); });
  return button;
}

QMenu* TempoTools::MakeBeats() {
  auto* menu = new QMenu(this);
  menu->setObjectName(DeckName(deck_, "BeatsMenu"));
  const auto scale = [&](Say text, music::BeatScale by) {
    menu->addAction(look_.say(text), this, [this, by] { commands_.Adjust(&app::DeckTempo::Scale, by); });
  };
  scale(Say::BpmDouble, music::BeatScale::Double);
  scale(Say::BpmHalf, music::BeatScale::Half);
  scale(Say::BpmTwoThirds, music::BeatScale::TwoThirds);
  scale(Say::BpmThreeHalves, music::BeatScale::ThreeHalves);
  menu->addSeparator();
  menu->addAction(look_.say(Say::GridHere), this, [this] { commands_.Adjust(&app::DeckTempo::Align); });
  menu->addAction(look_.say(KeyWord::BarHere), this,
                  [this] { commands_.Adjust(&app::DeckStation::BarHere); });
  menu->addAction(look_.say(Say::GridAsFound), this,
                  [this] { commands_.Adjust(&app::DeckStation::ForgetGrid); });
  return menu;
}

bool TempoTools::Loaded() const {
  return view_.state != DeckState::Empty && view_.state != DeckState::Loading;
}

void TempoTools::Tap() {
  if (Loaded()) commands_.Tap();
}

void TempoTools::ToggleSync() {
  if (view_.synced) return commands_.Unsync();
  if (Loaded()) commands_.Sync();
}

void TempoTools::ToggleKeyLock() {
  const bool on = view_.key_lock == decks::KeyLock::On;
  commands_.SetKeyLock(on ? decks::KeyLock::Off : decks::KeyLock::On);
}

void TempoTools::Nudge(int direction) {
  commands_.Nudge(Loaded() ? kNudge * static_cast<float>(direction) : 0);
}

QPushButton* TempoTools::MakeGain() {
  gain_ = new QLabel(this);
  gain_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  Name(*gain_, DeckName(deck_, "GainValue"), look_.say(Say::GainName).arg(deck_), look_.say(Say::GainTip));
  SetTextColour(*gain_, look_.skin.dim);
  SetWidest(*gain_, GainText(-18.8F));
  ask_gain_ = MakeButton({"Gain", Say::GainAsk, Say::GainAskName, Say::GainAskTip});
  connect(ask_gain_, &QPushButton::clicked, this, &TempoTools::QueryGain);
  return ask_gain_;
}

void TempoTools::QueryGain() {
  if (!Loaded() || !gain_of_.empty()) return;
  gain_of_ = view_.filename;
  answer_.reset();
  ShowGain();
  commands_.QueryGain([tools = QPointer(this), file = gain_of_](const auto& answer) {
    if (!tools.isNull() && tools->gain_of_ == file) tools->TakeGain(answer);
  });
}

void TempoTools::TakeGain(const app::GainAnswer& answer) {
  gain_of_.clear();
  if (answer.lacks) {
    answer_ = answer;
    answered_ = view_.filename;
  } else {
    Q_EMIT Told(look_.say(Say::GainUnknown).arg(deck_));
  }
  ShowGain();
}

void TempoTools::ShowGain() {
  const bool asked = answer_ && answered_ == view_.filename;
  const bool busy = !gain_of_.empty();
  QString text, by;
  if (asked) {
    text = GainText(answer_->lacks->value);
    by = QStringLiteral("mp3gain");
  } else if (view_.loudness.valid && Loaded()) {
    text = GainText(music::GainFor(view_.loudness).value);
    by = QStringLiteral("R128");
  }
  SetText(*gain_, text.isEmpty() ? QStringLiteral("– dB") : text);
  const QString full = text.isEmpty() ? QString() : by + QLatin1Char(' ') + text;
  if (gain_->accessibleDescription() != full) {
    gain_->setAccessibleDescription(full);
    gain_->setToolTip(full.isEmpty() ? look_.say(Say::GainTip)
                                     : full + QLatin1Char('\n') + look_.say(Say::GainTip));
  }
  const QString caption = look_.say(busy ? Say::GainBusy : Say::GainAsk);
  if (ask_gain_->text() != caption) ask_gain_->setText(caption);
  ask_gain_->setEnabled(Loaded() && !busy);
}

void TempoTools::MovePitch(float semitones) {
  commands_.SetPitch(std::clamp(std::round(semitones), -kMostPitch, kMostPitch));
}

void TempoTools::Show(const app::DeckView& view) {
  view_ = view;
  // What a lamp shows is what the deck does, not what was pressed last.
  sync_->setChecked(view.synced);
  key_lock_->setChecked(view.key_lock == decks::KeyLock::On);
  SetText(*pitch_, PitchText(view.pitch));
  if (gain_of_ != view.filename) gain_of_.clear();  // what was asked about is no longer here
  ShowGain();
  if (!Loaded() && (back_->isDown() || on_->isDown())) Nudge(0);  // a button says nothing when it goes out
  for (QPushButton* button : {back_, on_, sync_, tap_}) button->setEnabled(Loaded());
  for (QPushButton* button : {beats_, earlier_, later_}) button->setEnabled(Loaded() && view.grid != nullptr);
}

}  // namespace ui
