// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/CueTools.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QWidgetAction>
#include <cmath>
#include <utility>

#include "app/Deck.h"
#include "app/sound/DeckStation.h"
#include "ui/models/DeckChoice.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/CuePaint.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr double kGap = 0.3;
constexpr double kBetweenRows = 0.15;

QString BeatsText(double beats) {
  return beats < 1 ? QStringLiteral("1/%1").arg(std::lround(1 / beats)) : QString::number(std::lround(beats));
}

}  // namespace

CueTools::CueTools(app::Deck& deck, const Look& look, QWidget* parent)
    : QWidget(parent), deck_(deck.Number()), commands_(deck), look_(look) {
  colours_.fill(-2);
  cue_ = Make("MainCue", CueWord::CueCaption, look_.say(CueWord::CueName).arg(deck_), CueWord::CueCaptionTip,
              CueAct::Cue, "tool");
  cue_->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
  pad_row_ = MakePads();
  loop_row_ = MakeLoops();
  other_ = ToolButton(DeckName(deck_, "OtherRow"), {{}, {}, {}}, [this] {
    shows_loops_ = !shows_loops_;
    ShowRows();
  });
  auto* row = new QHBoxLayout(this);
  SetSpacingEm(*row, 0, kGap);
  row->addWidget(cue_);
  row->addLayout(Column(kBetweenRows, {pad_row_, loop_row_}), 1);
  row->addWidget(other_);
  ShowRows();
}

void CueTools::Fold(bool folds) {
  if (std::exchange(folded_, folds) != folds) ShowRows();
}

int CueTools::Foldable() const {
  return loop_row_->minimumSizeHint().height() + Em(*this, kBetweenRows);
}

void CueTools::ShowRows() {
  const auto word = shows_loops_ ? CueWord::ShowPads : CueWord::ShowLoops;
  other_->setText(look_.say(word));
  Name(*other_, other_->objectName(), other_->text(), look_.say.Tip(word));
  other_->setVisible(folded_);
  pad_row_->setVisible(!folded_ || !shows_loops_);
  loop_row_->setVisible(!folded_ || shows_loops_);
}

QPushButton* CueTools::Make(const char* name, CueWord caption, const QString& spoken, CueWord tip, CueAct act,
                            const char* kind) {
  auto* button = new QPushButton(look_.say(caption));
  SetKind(*button, kind);
  button->setCheckable(QLatin1String(kind).startsWith(QLatin1String("lamp")));
  const QString key = KeyText(KeyOf(act, deck_));
  Name(*button, DeckName(deck_, name), spoken, look_.say(Say::KeyHint).arg(look_.say(tip), key));
  connect(button, &QPushButton::pressed, this, [this, act] { Do(act, true); });
  connect(button, &QPushButton::released, this, [this, act] { Do(act, false); });
  return button;
}

QWidget* CueTools::MakePads() {
  auto* row = new QWidget;
  auto* pads = new QHBoxLayout(row);
  SetSpacingEm(*pads, 0, kGap);
  for (int slot = 0; slot < music::kHotCues; ++slot) {
    auto* pad = new QPushButton(QString::number(slot + 1));
    SetKind(*pad, "tool");
    pad->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    Name(*pad, DeckName(deck_, "Pad") + QString::number(slot + 1), CallPad(slot),
         look_.say(Say::KeyHint).arg(look_.say(CueWord::PadNameTip), KeyText(KeyOfPad(slot, deck_))));
    connect(pad, &QPushButton::pressed, this,
            [this, slot] { Pad(slot, true, QApplication::keyboardModifiers().testFlag(Qt::ShiftModifier)); });
    connect(pad, &QPushButton::released, this, [this, slot] { Pad(slot, false, false); });
    pad->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(pad, &QWidget::customContextMenuRequested, this,
            [this, slot, pad](const QPoint& at) { AskAtPad(slot, pad->mapToGlobal(at)); });
    pads->addWidget(pad, 1);
    pads_[static_cast<std::size_t>(slot)] = pad;
  }
  return row;
}

QWidget* CueTools::MakeLoops() {
  const auto& say = look_.say;
  const char* lamp = deck_ == 1 ? "lamp1" : "lamp2";
  const auto named = [&](CueWord word) { return say(word).arg(deck_); };
  in_ = Make("LoopIn", CueWord::LoopIn, named(CueWord::LoopInName), CueWord::LoopInTip, CueAct::In, "tool");
  out_ = Make("LoopOut", CueWord::LoopOut, named(CueWord::LoopOutName), CueWord::LoopOutTip, CueAct::Out,
              "tool");
  halve_ = Make("LoopHalve", CueWord::LoopHalve, named(CueWord::LoopHalveName), CueWord::LoopHalveTip,
                CueAct::Halve, "tool");
  loop_ = Make("Loop", CueWord::LoopHalve, say(CueWord::LoopName).arg(BeatsText(4)).arg(deck_),
               CueWord::LoopNameTip, CueAct::Loop, lamp);
  double_ = Make("LoopDouble", CueWord::LoopDouble, named(CueWord::LoopDoubleName), CueWord::LoopDoubleTip,
                 CueAct::Double, "tool");
  again_ =
      Make("Reloop", CueWord::Reloop, named(CueWord::ReloopName), CueWord::ReloopTip, CueAct::Reloop, "tool");
  back_ = Make("JumpBack", CueWord::JumpBack, named(CueWord::JumpBackName), CueWord::JumpBackTip,
               CueAct::JumpBack, "tool");
  on_ =
      Make("JumpOn", CueWord::JumpOn, named(CueWord::JumpOnName), CueWord::JumpOnTip, CueAct::JumpOn, "tool");
  slip_ = Make("Slip", CueWord::Slip, named(CueWord::SlipName), CueWord::SlipTip, CueAct::Slip, lamp);
  quantise_ = new QPushButton(say(CueWord::Quantise));
  SetKind(*quantise_, lamp);
  quantise_->setCheckable(true);
  Name(*quantise_, DeckName(deck_, "Quantise"), named(CueWord::QuantiseName), say(CueWord::QuantiseTip));
  connect(quantise_, &QPushButton::clicked, this, [this] { commands_.SetQuantise(!view_.cues.quantise); });
  AddMenu(
      *loop_, CueWord::LoopMoveBack, [this](int on) { commands_.Do(&app::DeckCues::MoveLoop, on); },
      CueWord::LoopMoveOn);
  for (QPushButton* jump : {back_, on_}) {
    AddMenu(
        *jump, CueWord::JumpFewer, [this](int up) { commands_.Adjust(&app::DeckCues::ResizeJump, up); },
        CueWord::JumpMore);
  }
  auto* row = new QWidget;
  FillRow(*row, 0, kGap, {in_, out_, halve_, {loop_, 1}, double_, again_, back_, on_, quantise_, slip_});
  return row;
}

void CueTools::AddMenu(QPushButton& button, CueWord less, std::function<void(int)> chosen, CueWord more) {
  button.setContextMenuPolicy(Qt::ActionsContextMenu);
  for (const auto& [word, step] : {std::pair(less, -1), std::pair(more, 1)}) {
    auto* action = new QAction(look_.say(word), &button);
    connect(action, &QAction::triggered, this, [chosen, step = step] { chosen(step); });
    button.addAction(action);
  }
}

void CueTools::AskAtPad(int slot, const QPoint& place) {
  if (!Loaded()) return;
  auto* menu = new QMenu(this);
  menu->setObjectName(DeckName(deck_, "PadMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto& marked = view_.cues.marked;
  const auto cue = marked != nullptr ? marked->hot[static_cast<std::size_t>(slot)] : std::nullopt;
  if (cue) {
    auto* name = new QLineEdit(Decode(cue->name));
    name->setPlaceholderText(look_.say(CueWord::CueNaming));
    name->setAccessibleName(look_.say(CueWord::CueNaming));
    name->setMaxLength(static_cast<int>(music::kLongestCueName));
    connect(name, &QLineEdit::returnPressed, menu, [this, slot, name, menu] {
      commands_.Adjust(&app::DeckCues::Name, slot, name->text().toStdString());
      menu->close();
    });
    auto* action = new QWidgetAction(menu);
    action->setDefaultWidget(name);
    menu->addAction(action);
    for (int colour = 0; colour < music::kCueColours; ++colour) {
      QPixmap sample(Em(*this, 1), Em(*this, 1));
      sample.fill(CueColourOf(colour));
      menu->addAction(sample, look_.say(CueWord::CueColour).arg(colour + 1), this,
                      [this, slot, colour] { commands_.Adjust(&app::DeckCues::Colour, slot, colour); });
    }
    menu->addAction(look_.say(CueWord::CueDelete), this,
                    [this, slot] { commands_.Adjust(&app::DeckCues::Delete, slot); });
  }
  if (view_.cues.has_loop) {
    menu->addAction(look_.say(CueWord::CueKeepLoop), this,
                    [this, slot] { commands_.Adjust(&app::DeckCues::SaveLoop, slot); });
  }
  menu->popup(place);
}

bool CueTools::Loaded() const {
  return view_.state != DeckState::Empty && view_.state != DeckState::Loading;
}

void CueTools::Pad(int slot, bool down, bool deletes) {
  if (down && deletes) return commands_.Adjust(&app::DeckCues::Delete, slot);
  if (down ? held_ != kNothingHeld : held_ != slot) return;  // one at a time
  held_ = down ? slot : kNothingHeld;
  commands_.Do(&app::DeckCues::Hot, slot, down);
}

void CueTools::Do(CueAct act, bool down) {
  using app::DeckCues;
  if (act == CueAct::Cue) {
    if (down ? held_ != kNothingHeld : held_ != kCueHeld) return;
    held_ = down ? kCueHeld : kNothingHeld;
    return commands_.Do(&DeckCues::Cue, down);
  }
  if (!down) return;
  switch (act) {
    case CueAct::Cue:
      break;
    case CueAct::Loop:
      return commands_.Do(&DeckCues::Loop);
    case CueAct::In:
      return commands_.Adjust(&DeckCues::LoopIn);
    case CueAct::Out:
      return commands_.Do(&DeckCues::LoopOut);
    case CueAct::Reloop:
      return commands_.Do(&DeckCues::Reloop);
    case CueAct::Halve:
      return commands_.Do(&DeckCues::Resize, -1);
    case CueAct::Double:
      return commands_.Do(&DeckCues::Resize, 1);
    case CueAct::JumpBack:
      return commands_.Do(&DeckCues::Jump, -1);
    case CueAct::JumpOn:
      return commands_.Do(&DeckCues::Jump, 1);
    case CueAct::Slip:
      return commands_.Adjust(&DeckCues::Slip, !view_.cues.slip);
    case CueAct::MoveBack:
      return commands_.Do(&DeckCues::MoveLoop, -1);
    case CueAct::MoveOn:
      return commands_.Do(&DeckCues::MoveLoop, 1);
  }
}

bool CueTools::TakeKey(int key, Qt::KeyboardModifiers modifiers, bool down, bool repeated) {
  if (held_key_ == key && key != 0) {
    if (down || repeated) return true;
    LetGo();
    return true;
  }
  if (!down || !modifiers.testFlag(Qt::AltModifier)) return false;
  // What waits for an answer has such keys of its own.
  if (QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr)
    return false;
  const Qt::KeyboardModifiers plain = modifiers & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
  for (int slot = 0; slot < music::kHotCues; ++slot) {
    const QKeyCombination wanted = KeyOfPad(slot, deck_)[0];
    const bool deletes = plain == (Qt::AltModifier | Qt::ShiftModifier);
    if (key != wanted.key() || (plain != Qt::AltModifier && !deletes)) continue;
    if (repeated) return true;
    if (Loaded()) Pad(slot, true, deletes);
    if (held_ == slot) held_key_ = key;
    return true;
  }
  for (int act = 0; act < kCueActs; ++act) {
    const QKeyCombination wanted = KeyOf(static_cast<CueAct>(act), deck_)[0];
    if (key != wanted.key() || plain != wanted.keyboardModifiers()) continue;
    if (repeated) return true;
    if (Loaded()) Do(static_cast<CueAct>(act), true);
    if (held_ == kCueHeld) held_key_ = key;
    return true;
  }
  return false;
}

void CueTools::LetGo() {
  held_key_ = 0;
  if (held_ == kNothingHeld) return;
  if (held_ == kCueHeld) return Do(CueAct::Cue, false);
  Pad(held_, false, false);
}

QString CueTools::CallPad(int slot) const {
  QString called = look_.say(CueWord::PadName).arg(slot + 1).arg(deck_);
  const auto& marked = view_.cues.marked;
  if (marked == nullptr || !marked->hot[static_cast<std::size_t>(slot)]) return called;
  const std::string& name = marked->hot[static_cast<std::size_t>(slot)]->name;
  return name.empty() ? called : called + QStringLiteral(": ") + Decode(name);
}

void CueTools::ShowPads(const app::CuesView& cues) {
  for (int slot = 0; slot < music::kHotCues; ++slot) {
    const auto at = static_cast<std::size_t>(slot);
    const auto cue = cues.marked != nullptr ? cues.marked->hot[at] : std::nullopt;
    QPushButton& pad = *pads_[at];
    QString text = QString::number(slot + 1);
    if (cue && cue->length.count() > 0) text = QStringLiteral("⟳") + text;
    if (cue && !cue->name.empty()) text += QLatin1Char(' ') + Decode(cue->name);
    text.replace(QLatin1Char('&'), QStringLiteral("&&"));
    if (pad.text() != text) pad.setText(text);
    if (const QString called = CallPad(slot); pad.accessibleName() != called) pad.setAccessibleName(called);
    const int colour = cue ? cue->colour : -1;
    if (std::exchange(colours_[at], colour) == colour) continue;
    pad.setStyleSheet(colour < 0 ? QString()
                                 : QStringLiteral("QPushButton { background: %1; color: black; }")
                                       .arg(CueColourOf(colour).name()));
  }
}

void CueTools::Show(const app::DeckView& view) {
  const bool beats_moved = view.cues.beats != view_.cues.beats || loop_->text().contains(QLatin1Char('%'));
  view_ = view;
  const app::CuesView& cues = view.cues;
  ShowPads(cues);
  const QString beats = BeatsText(cues.beats);
  if (loop_->text() != beats) loop_->setText(beats);
  if (beats_moved) loop_->setAccessibleName(look_.say(CueWord::LoopName).arg(beats).arg(deck_));
  const QString jump = BeatsText(cues.jump);
  if (const QString text = look_.say(CueWord::JumpBack).arg(jump); back_->text() != text) {
    back_->setText(text);
    on_->setText(look_.say(CueWord::JumpOn).arg(jump));
  }
  loop_->setChecked(cues.looping);
  slip_->setChecked(cues.slip);
  quantise_->setChecked(cues.quantise);
  const bool loaded = Loaded();
  if (!loaded) LetGo();
  cue_->setEnabled(loaded);
  for (QPushButton* pad : pads_) pad->setEnabled(loaded);
  for (QPushButton* button : {in_, halve_, double_, slip_}) button->setEnabled(loaded);
  out_->setEnabled(loaded && cues.in.has_value());
  again_->setEnabled(loaded && cues.has_loop);
  const std::pair<QPushButton*, CueAct> by_beats[] = {
      {loop_, CueAct::Loop}, {back_, CueAct::JumpBack}, {on_, CueAct::JumpOn}};
  const CueWord tips[] = {CueWord::LoopNameTip, CueWord::JumpBackTip, CueWord::JumpOnTip};
  for (std::size_t i = 0; i < std::size(by_beats); ++i) {
    const auto& [button, act] = by_beats[i];
    button->setEnabled(loaded && (cues.has_beats || (button == loop_ && cues.looping)));
    const CueWord word = loaded && !cues.has_beats ? CueWord::NoBeats : tips[i];
    const QString tip = look_.say(Say::KeyHint).arg(look_.say(word), KeyText(KeyOf(act, deck_)));
    if (button->toolTip() != tip) button->setToolTip(tip);
  }
}

}  // namespace ui
