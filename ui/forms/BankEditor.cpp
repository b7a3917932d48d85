// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/BankEditor.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QTableView>
#include <algorithm>
#include <utility>

#include "ui/forms/Dialogs.h"
#include "ui/forms/MessageBoxes.h"
#include "ui/strings/BankWords.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/BankDelegate.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

using lightorgan::BankBook;
using lightorgan::IoBoardSize;
using lightorgan::LightOrgan;
using lightorgan::Side;

constexpr double kRowEms = 1.9;
constexpr double kColumnEms = 2.3;
constexpr double kFurtherEms = 11;

}  // namespace

BankEditor::BankEditor(app::OrganStation& station, MessageBoxes& boxes, BankDraft& draft, const Look& look,
                       IoBoardSize size, QWidget* parent)
    : QDialog(parent),
      station_(station),
      boxes_(boxes),
      draft_(draft),
      look_(look),
      model_(draft.book, look) {
  Name(*this, "BankEditor", look.say(BankWord::BankEditor));
  setWindowTitle(look.say(BankWord::BankEditor));
  FillColumn(*this, 0.8, 0.6, {{Row(1.2, {{MakeBanks(size), 2}, {MakeSteps(), 5}}), 1}, MakeEnd()});
  connect(&model_, &QAbstractItemModel::dataChanged, this, &BankEditor::Changed);
}

BankEditor::~BankEditor() {
  if (playing_) station_.Ask([](LightOrgan& organ) { organ.ReloadBanks(); });
}

QPushButton* BankEditor::MakeButton(const char* name, BankWord caption, BankWord tip,
                                    std::function<void()> pressed) {
  auto* button = new QPushButton(look_.say(caption));
  Name(*button, name, look_.say(caption), look_.say(tip));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, std::move(pressed));
  return button;
}

QVBoxLayout* BankEditor::MakeBanks(IoBoardSize size) {
  const auto& say = look_.say;
  file_ = Choice(look_.skin, "BankFile", say.Of(BankWord::BankFile),
                 {say(BankWord::BankFileIo1), say(BankWord::BankFileIo2), say(BankWord::BankFileDac1),
                  say(BankWord::BankFileDac2)});
  if (draft_.book.Changed()) size = draft_.book.Size();
  const bool dac = draft_.book.Changed() && draft_.book.WhichSide() == Side::Dac;
  shown_file_ = (dac ? 2 : 0) + (size == IoBoardSize::Two ? 1 : 0);
  file_->setCurrentIndex(shown_file_);
  connect(file_, &QComboBox::activated, this, &BankEditor::ChooseFile);
  banks_ = new QListWidget;
  banks_->setFrameShape(QFrame::NoFrame);
  Name(*banks_, "BankList", say.Of(BankWord::Banks));
  connect(banks_, &QListWidget::currentRowChanged, this, &BankEditor::ShowSteps);
  auto* fresh = MakeButton("BankNew", BankWord::BankNew, BankWord::BankNewTip, [this] {
    ShowBanks(draft_.book.Add());
    Changed();
  });
  auto* copy = MakeButton("BankCopy", BankWord::BankCopy, BankWord::BankCopyTip, [this] {
    ShowBanks(draft_.book.Copy(ChosenBank()));
    Changed();
  });
  auto* remove =
      MakeButton("BankRemove", BankWord::BankRemove, BankWord::BankRemoveTip, [this] { RemoveBank(); });
  bank_acts_ = {copy, remove};
  return Column(0.5, {file_, {banks_, 1}, Row(0.4, {{fresh, 1}, {copy, 1}, {remove, 1}})});
}

void BankEditor::MakeTable() {
  steps_ = new QTableView;
  steps_->setModel(&model_);
  steps_->setItemDelegate(new BankDelegate(look_.skin, steps_));
  steps_->setShowGrid(false);
  steps_->setFrameShape(QFrame::NoFrame);
  steps_->setSelectionBehavior(QAbstractItemView::SelectRows);
  steps_->setSelectionMode(QAbstractItemView::SingleSelection);
  steps_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
  steps_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  steps_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  steps_->verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
  steps_->installEventFilter(this);
  connect(steps_, &QTableView::clicked, &model_, &BankModel::Toggle);
}

QVBoxLayout* BankEditor::MakeSteps() {
  const auto& say = look_.say;
  MakeTable();
  auto* acts = new QHBoxLayout;
  SetSpacingEm(*acts, 0, 0.4);
  const auto add = [&](const char* name, BankWord caption, BankWord tip, StepAct act) {
    auto* button = MakeButton(name, caption, tip, [this, act] { OnSteps(act); });
    step_acts_.push_back(button);
    acts->addWidget(button, 1);
  };
  acts->addWidget(Heading(say(BankWord::BankSteps), 1.2));
  add("StepAdd", BankWord::StepAdd, BankWord::StepAddTip, &BankEditor::AddStep);
  add("StepCopy", BankWord::BankCopy, BankWord::StepCopyTip, &BankEditor::CopyStep);
  add("StepRemove", BankWord::BankRemove, BankWord::StepRemoveTip, &BankEditor::RemoveStep);
  add("StepUp", BankWord::StepUp, BankWord::StepUpTip, &BankEditor::StepUp);
  add("StepDown", BankWord::StepDown, BankWord::StepDownTip, &BankEditor::StepDown);
  return Column(0.5, {{steps_, 1}, acts});
}

QHBoxLayout* BankEditor::MakeEnd() {
  message_ = Sentence("BankMessage");
  play_ =
      MakeButton("BankPlay", BankWord::BankPlay, BankWord::BankPlayTip, [this] { Play(play_->isChecked()); });
  play_->setCheckable(true);
  save_ = MakeButton("BankSave", BankWord::BankSave, BankWord::BankSaveTip, [this] { Save(); });
  auto* close = MakeButton("BankClose", BankWord::BankClose, BankWord::BankCloseTip, [this] { reject(); });
  return Row(0.4, {{message_, 1}, play_, save_, close});
}

BankEditor::File BankEditor::Chosen() const {
  return {shown_file_ < 2 ? Side::Io : Side::Dac, shown_file_ % 2 == 1 ? IoBoardSize::Two : IoBoardSize::One};
}

std::size_t BankEditor::ChosenBank() const {
  return banks_->currentRow() < 0 ? draft_.book.Banks().size()
                                  : static_cast<std::size_t>(banks_->currentRow());
}

void BankEditor::Open() {
  if (draft_.book.Changed()) {
    ShowBanks(0);
  } else {
    Read();
  }
  draft_.open = true;
  parentWidget()->window()->installEventFilter(this);
  ShowDialog(*this, *parentWidget());
  SetKind(*play_, "lamp1");
  play_->style()->polish(play_);
  Place();
  steps_->verticalHeader()->setDefaultSectionSize(Em(*this, kRowEms));
  steps_->verticalHeader()->setMinimumWidth(Em(*this, 3.2));
  steps_->horizontalHeader()->setMinimumSectionSize(Em(*this, kColumnEms));
  SizeColumns();
  raise();
}

/// Over the lists, so that the decks stay in reach, and within the window.
void BankEditor::Place() {
  const QWidget& owner = *parentWidget()->window();
  resize(std::min(Em(*this, 86), owner.width()), std::min(Em(*this, 27), owner.height()));
  const int left = (owner.width() - width()) / 2;
  const int top = std::max(0, owner.height() - height() - Em(*this, 2));
  move(owner.mapToGlobal(QPoint(left, top)));
}

void BankEditor::SizeColumns() {
  QHeaderView& head = *steps_->horizontalHeader();
  for (int column = 0; column < model_.columnCount(); ++column) {
    const bool output = column < draft_.book.Outputs();
    head.setSectionResizeMode(column, output ? QHeaderView::Stretch : QHeaderView::Fixed);
    if (!output) head.resizeSection(column, Em(*this, kFurtherEms));
  }
}

void BankEditor::Leave(std::function<void()> then) {
  if (!draft_.book.Changed()) return then();
  boxes_.Ask(QStringLiteral("BankLeaveBox"), look_.say(BankWord::BankAskLeave),
             look_.say(BankWord::BankLeave), [editor = QPointer(this), then = std::move(then)] {
               if (editor.isNull()) return;
               editor->draft_.book.Kept();
               then();
             });
}

void BankEditor::ChooseFile() {
  const int wanted = file_->currentIndex();
  file_->setCurrentIndex(shown_file_);
  if (wanted == shown_file_) return;
  Leave([this, wanted] {
    Play(false);
    file_->setCurrentIndex(wanted);
    shown_file_ = wanted;
    Read();
  });
}

void BankEditor::Read() {
  const File file = Chosen();
  station_.ReadBanks(file.side, file.size, [editor = QPointer(this), file](const auto& banks) {
    if (editor.isNull() || editor->Chosen().side != file.side || editor->Chosen().size != file.size) return;
    editor->draft_.book = BankBook(file.side, file.size, banks ? banks.Value() : app::OrganFiles::Banks());
    editor->ShowBanks(0);
    if (!banks) editor->Tell(Decode(banks.Failure().text), editor->look_.skin.danger);
  });
}

void BankEditor::Save() {
  // Never over the banks of another file, whatever the list shows.
  const BankBook& book = draft_.book;
  station_.SaveBanks(book.WhichSide(), book.Size(), book.Banks(),
                     [editor = QPointer(this), edits = edits_](const support::Result<void>& saved) {
                       if (editor.isNull()) return;
                       if (saved && editor->edits_ == edits) editor->draft_.book.Kept();
                       editor->ShowActs();
                       const Skin& skin = editor->look_.skin;
                       editor->Tell(
                           saved ? editor->look_.say(BankWord::BankSaved) : Decode(saved.Failure().text),
                           saved ? skin.dim : skin.danger);
                       if (editor->play_->isChecked()) editor->Try();
                       Q_EMIT editor->Saved();
                     });
}

void BankEditor::reject() {
  Leave([this] { Close(); });
}

void BankEditor::Close() {
  Play(false);
  draft_.open = false;
  QDialog::reject();
}

void BankEditor::OnSteps(StepAct act) {
  const int row = steps_->currentIndex().row();
  (this->*act)(static_cast<std::size_t>(std::max(0, row)));
}

void BankEditor::AddStep(std::size_t step) {
  const bool none = model_.rowCount() == 0;
  draft_.book.AddStep(ChosenBank(), step);
  ChooseStep(none ? 0 : step + 1);
}

void BankEditor::CopyStep(std::size_t step) {
  draft_.book.CopyStep(ChosenBank(), step);
  ChooseStep(step + 1);
}

void BankEditor::RemoveStep(std::size_t step) {
  draft_.book.RemoveStep(ChosenBank(), step);
  ChooseStep(step);
}

void BankEditor::StepUp(std::size_t step) {
  if (draft_.book.MoveStep(ChosenBank(), step, -1)) ChooseStep(step - 1);
}

void BankEditor::StepDown(std::size_t step) {
  if (draft_.book.MoveStep(ChosenBank(), step, 1)) ChooseStep(step + 1);
}

/// The steps are other ones.
void BankEditor::ChooseStep(std::size_t step) {
  const int column = std::max(0, steps_->currentIndex().column());
  model_.Show(ChosenBank());
  const int row = std::min(static_cast<int>(step), model_.rowCount() - 1);
  if (row >= 0) steps_->setCurrentIndex(model_.index(row, column));
  Changed();
}

void BankEditor::RemoveBank() {
  const std::size_t bank = ChosenBank();
  draft_.book.Remove(bank);
  ShowBanks(std::min(bank, draft_.book.Banks().size() - (draft_.book.Banks().empty() ? 0 : 1)));
  Changed();
}

void BankEditor::ShowBanks(std::size_t chosen) {
  const QSignalBlocker quiet(banks_);
  banks_->clear();
  for (const lightorgan::Bank& bank : draft_.book.Banks()) {
    banks_->addItem(look_.say.Count(BankWord::BankItem, bank.number, bank.steps.size()));
  }
  banks_->setCurrentRow(chosen < draft_.book.Banks().size() ? static_cast<int>(chosen) : -1);
  ShowSteps();
}

void BankEditor::ShowSteps() {
  model_.Show(ChosenBank());
  const bool io = draft_.book.WhichSide() == Side::Io;
  Name(*steps_, "BankSteps", look_.say(BankWord::BankSteps),
       look_.say(io ? BankWord::BankStepsTip : BankWord::BankValuesTip));
  SizeColumns();
  if (model_.rowCount() > 0) steps_->setCurrentIndex(model_.index(0, 0));
  ShowActs();
  if (play_->isChecked()) Try();
}

void BankEditor::Changed() {
  ++edits_;
  const std::size_t bank = ChosenBank();
  if (bank < draft_.book.Banks().size()) {
    const lightorgan::Bank& edited = draft_.book.Banks()[bank];
    banks_->currentItem()->setText(look_.say.Count(BankWord::BankItem, edited.number, edited.steps.size()));
  }
  ShowActs();
  if (play_->isChecked()) Try();
}

void BankEditor::ShowActs() {
  const bool bank = ChosenBank() < draft_.book.Banks().size();
  for (QPushButton* button : bank_acts_) button->setEnabled(bank);
  for (QPushButton* button : step_acts_)
    button->setEnabled(bank && (model_.rowCount() > 0 || button == step_acts_.front()));
  play_->setEnabled(bank && fits_boards_);
  save_->setEnabled(draft_.book.Changed());
  if (draft_.book.Changed()) Tell(look_.say(BankWord::BankUnsaved), look_.skin.warning);
}

void BankEditor::Play(bool on) {
  seen_playing_ = false;
  const bool was = std::exchange(playing_, on);
  play_->setChecked(on);
  model_.ShowRunning(0);
  if (on) {
    const int mode = static_cast<int>(Chosen().side == Side::Io ? int(lightorgan::IoMode::Pp)
                                                                : int(lightorgan::DacMode::Pp));
    station_.Ask([mode](LightOrgan& organ) { organ.cmdK8000(mode); });
    Try();
  } else if (was) {
    station_.Ask([](LightOrgan& organ) { organ.ReloadBanks(); });
  }
}

void BankEditor::Try() {
  auto table = std::make_shared<const lightorgan::StepTable>(draft_.book.Played(ChosenBank()));
  station_.Ask([side = Chosen().side, table](LightOrgan& organ) { organ.TryBank(side, table); });
}

void BankEditor::Tell(const QString& sentence, const QColor& colour) {
  SetTextColour(*message_, colour);
  message_->Show(sentence);
}

void BankEditor::Show(const app::OrganView& view) {
  if (!isVisible()) return;
  const auto& lamps = view.lamps;
  const bool fits = lamps.size == Chosen().size;
  if (fits != fits_boards_) {
    fits_boards_ = fits;
    if (!fits) Play(false);
    play_->setToolTip(look_.say(fits ? BankWord::BankPlayTip : BankWord::BankOtherSize));
    ShowActs();
  }
  if (!playing_) return;
  const bool io = Chosen().side == Side::Io;
  const bool plays = io ? lamps.io_mode == lightorgan::IoMode::Pp : lamps.dac_mode == lightorgan::DacMode::Pp;
  if (seen_playing_ && !plays) return Play(false);
  seen_playing_ = seen_playing_ || plays;
  model_.ShowRunning(plays ? (io ? lamps.io.row : lamps.dac.row) : 0);
}

bool BankEditor::eventFilter(QObject* watched, QEvent* event) {
  QWidget* owner = parentWidget()->window();
  if (watched == owner && event->type() == QEvent::Close && draft_.book.Changed()) {
    event->ignore();
    // Later: the box is still open when it has been answered.
    Leave([owner] { QMetaObject::invokeMethod(owner, &QWidget::close, Qt::QueuedConnection); });
    return true;
  }
  if (watched == steps_ && event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space && draft_.book.WhichSide() == Side::Io) {
    model_.Toggle(steps_->currentIndex());
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace ui
