// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/OrganBoardPanel.h"

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "ui/forms/MessageBoxes.h"
#include "ui/strings/BankWords.h"
#include "ui/strings/Decode.h"
#include "ui/strings/OrganWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

using lightorgan::IoBoardSize;
using lightorgan::LightOrgan;

constexpr auto kHoldShown = std::chrono::milliseconds(700);  ///< or it would only flicker

}  // namespace

OrganBoardPanel::OrganBoardPanel(app::OrganStation& station, MessageBoxes& boxes, const Look& look,
                                 QWidget* parent)
    : QWidget(parent), station_(station), boxes_(boxes), look_(look) {
  Name(*this, "OrganBoards", look.say(OrganWord::Boards));
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0, 0.4);
  MakeBoards(*rows);
  MakeGuard(*rows);
  MakeMemories(*rows);
}

void OrganBoardPanel::MakeBoards(QVBoxLayout& rows) {
  const auto& say = look_.say;
  use_ = Lamp("UseK8000", say.Of(OrganWord::Boards), [this](bool) {
    use_echo_.Sent(use_->isChecked() ? 1.0F : 0.0F, now_);
    station_.SwitchBoards(use_->isChecked());
  });
  size_ = Choice(look_.skin, "IoBoardSize", say.Of(OrganWord::BoardSize),
                 {say(OrganWord::OneBoard), say(OrganWord::TwoBoards)}, 0, [this](int choice) {
                   station_.Ask([choice](LightOrgan& organ) {
                     organ.SetIoBoardSize(choice == 1 ? IoBoardSize::Two : IoBoardSize::One);
                   });
                 });
  state_ = Sentence("BoardState");
  rows.addLayout(Row(0.4, {use_, {size_, 1}}));
  rows.addWidget(state_);
}

void OrganBoardPanel::MakeGuard(QVBoxLayout& rows) {
  const auto& say = look_.say;
  guard_ = Lamp("FlashGuard", say.Of(OrganWord::Guard), [this](bool) {
    if (!guard_->isChecked()) return AskToLift();
    guard_echo_.Sent(1, now_);
    station_.Ask([](LightOrgan& organ) { organ.LiftGuard(false); });
  });
  holds_ = Reading("FlashGuardHolds");
  SetTextColour(*holds_, look_.skin.warning);
  rows.addLayout(Row(0.4, {guard_, {holds_, 1}}));
}

void OrganBoardPanel::AskToLift() {
  guard_->setChecked(true);
  boxes_.Ask(QStringLiteral("GuardBox"), look_.say(OrganWord::GuardAsk), look_.say(OrganWord::GuardLift),
             [panel = QPointer(this)] {
               if (panel.isNull()) return;
               panel->station_.Ask([](LightOrgan& organ) { organ.LiftGuard(true); });
             });
}

void OrganBoardPanel::MakeMemories(QVBoxLayout& rows) {
  const auto& say = look_.say;
  memories_ = new QListWidget;
  memories_->setFrameShape(QFrame::NoFrame);
  memories_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  memories_->setTextElideMode(Qt::ElideRight);
  Name(*memories_, "Memories", say.Of(OrganWord::Memories));
  connect(memories_, &QListWidget::itemActivated, this, &OrganBoardPanel::Recall);
  connect(memories_, &QListWidget::currentRowChanged, this, [this](int row) {
    recall_->setEnabled(row >= 0);
    forget_->setEnabled(row >= 0);
  });
  recall_ = ToolButton("MemoryRecall", say.Of(OrganWord::Recall), [this] { Recall(); });
  forget_ =
      ToolButton("MemoryForget", {say(Say::EqDelete), say(Say::EqDelete), say(BankWord::MemoryForgetTip)},
                 [this] { Forget(); });
  for (QPushButton* button : {recall_, forget_}) button->setEnabled(false);
  name_ = new QLineEdit;
  name_->setPlaceholderText(say(OrganWord::MemoryName));
  name_->setMaxLength(60);
  Name(*name_, "MemoryName", say(OrganWord::MemoryName), say(OrganWord::RememberTip));
  connect(name_, &QLineEdit::returnPressed, this, &OrganBoardPanel::Remember);
  rows.addLayout(Row(
      0.4, {{Heading(say(OrganWord::Memories)), 1},
            ToolButton("EditBanks",
                       {say(OrganWord::EditBanks), say(OrganWord::EditBanks), say(BankWord::EditBanksTip)},
                       [this] { Q_EMIT EditorWanted(); })}));
  rows.addWidget(memories_, 1);
  rows.addLayout(Row(0.4, {{recall_, 1}, {forget_, 1}}));
  rows.addLayout(Row(
      0.4, {{name_, 1}, ToolButton("MemoryRemember", say.Of(OrganWord::Remember), [this] { Remember(); })}));
}

void OrganBoardPanel::Remember() {
  station_.Remember(name_->text().trimmed().toStdString());
  name_->clear();
}

void OrganBoardPanel::Recall() {
  if (memories_->currentRow() >= 0) station_.Recall(static_cast<std::size_t>(memories_->currentRow()));
}

void OrganBoardPanel::Forget() {
  if (memories_->currentRow() < 0) return;
  const std::string name = listed_[static_cast<std::size_t>(memories_->currentRow())];
  boxes_.Ask(QStringLiteral("MemoryBox"), look_.say(BankWord::MemoryAskForget).arg(Decode(name)),
             look_.say(Say::EqDelete), [panel = QPointer(this), name] {
               if (panel.isNull()) return;
               const auto& memories = panel->station_.Memories();
               const auto there = std::find_if(memories.begin(), memories.end(),
                                               [&](const auto& memory) { return memory.name == name; });
               panel->station_.Forget(static_cast<std::size_t>(there - memories.begin()));
             });
}

void OrganBoardPanel::ShowMemories() {
  const auto& memories = station_.Memories();
  const bool same =
      std::equal(memories.begin(), memories.end(), listed_.begin(), listed_.end(),
                 [](const auto& memory, const std::string& name) { return memory.name == name; });
  if (same) return;
  listed_.clear();
  memories_->clear();
  for (const lightorgan::Memory& memory : memories) {
    listed_.push_back(memory.name);
    memories_->addItem(Decode(memory.name));
  }
}

void OrganBoardPanel::Show(const app::OrganView& view, support::TimePoint now) {
  now_ = now;
  const auto& lamps = view.lamps;
  if (use_echo_.Believe(lamps.boards_in_use ? 1.0F : 0.0F, now)) use_->setChecked(lamps.boards_in_use);
  const int choice = lamps.size == IoBoardSize::Two ? 1 : 0;
  if (size_->currentIndex() != choice && !size_->view()->isVisible()) size_->setCurrentIndex(choice);
  const bool trouble = lamps.boards_in_use && !lamps.trouble.empty();
  SetTextColour(*state_, trouble ? look_.skin.danger : look_.skin.dim);
  const QString state = trouble ? Decode(lamps.trouble)
                                : look_.say(lamps.boards_in_use ? OrganWord::BoardsOn : OrganWord::BoardsOff);
  state_->Show(state);
  if (guard_echo_.Believe(lamps.guard_lifted ? 0.0F : 1.0F, now)) guard_->setChecked(!lamps.guard_lifted);
  if (lamps.guard_holds) held_at_ = now;
  const bool holds = !lamps.guard_lifted && held_at_ != support::TimePoint{} && now - held_at_ < kHoldShown;
  SetText(*holds_, holds ? look_.say(OrganWord::GuardHolds) : QString());
  ShowMemories();
}

}  // namespace ui
