// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/frmTags.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <set>
#include <utility>

#include "app/Workstation.h"
#include "ui/forms/MessageBox.h"
#include "ui/forms/TagCoverPanel.h"
#include "ui/forms/TagFieldsPanel.h"
#include "ui/forms/TagToolsPanel.h"
#include "ui/models/TagFilesModel.h"
#include "ui/strings/Decode.h"
#include "ui/strings/TagWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/ReportList.h"

namespace ui {
namespace {

using app::TagStation;

constexpr QSize kSmallestTags(960, 560);
constexpr double kShareOfTagScreen = 0.8;

bool CanTakeBack(const QWidget* typing) {
  if (const auto* line = qobject_cast<const QLineEdit*>(typing)) return line->isUndoAvailable();
  const auto* text = qobject_cast<const QPlainTextEdit*>(typing);
  return text != nullptr && text->document()->isUndoAvailable();
}

}  // namespace

frmTags::frmTags(TagStation& tags) : tags_(tags) {
  setObjectName(QStringLiteral("frmTags"));
  setAttribute(Qt::WA_QuitOnClose, false);
  setMinimumSize(kSmallestTags);
  resize(screen()->availableSize() * kShareOfTagScreen);
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  qApp->installEventFilter(this);
}

frmTags::~frmTags() {
  tags_.Leave();
  ClearSheet();
}

void frmTags::ApplySheet(const Look& look, double points) {
  ClearSheet();
  look_.emplace(look);
  QFont font = this->font();
  font.setPointSizeF(points);
  setFont(font);
  setWindowTitle(Decode(app::Caption(look.say(TagWord::TagsTitle).toStdString())) + QStringLiteral("[*]"));
  body_ = MakeBody();
  layout()->addWidget(body_);
  ApplyBaseSize(*this, points);
  auto& list = *findChild<QTableView*>(QStringLiteral("TagFiles"));
  list.verticalHeader()->setDefaultSectionSize(Em(list, look.skin.RowEms()));
  ShowDraft();
}

void frmTags::ClearSheet() {
  for (MessageBox* box : findChildren<MessageBox*>()) delete box;
  delete body_;
  body_ = nullptr;
}

QWidget* frmTags::MakeBody() {
  auto* body = new QWidget(this);
  QWidget* list = MakeList();
  QWidget* right = MakeFields();
  connect(tools_, &TagToolsPanel::Touched, this, [this] {
    fields_->ShowAll();
    ShowState();
  });
  connect(tools_, &TagToolsPanel::RenameWanted, this, &frmTags::AskRename);
  FillColumn(*body, 0.6, 0.5, {{Row(0.6, {{right, 2}, {list, 3}}), 1}, MakeFoot()});
  return body;
}

QWidget* frmTags::MakeList() {
  model_ = new TagFilesModel(draft_, *look_, this);
  auto* list = new QTableView;
  model_->setParent(list);
  Name(*list, "TagFiles", look_->say.Of(TagWord::TagFiles));
  list->setModel(model_);
  list->verticalHeader()->hide();
  list->setShowGrid(false);
  list->setWordWrap(false);
  list->setTabKeyNavigation(false);
  list->setAlternatingRowColors(true);
  list->setSelectionMode(QAbstractItemView::NoSelection);
  list->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  list->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  tools_ = new TagToolsPanel(draft_, *model_, *look_);
  report_ = new ReportList(QStringLiteral("TagReport"), *look_);
  auto* box = new QWidget;
  FillColumn(*box, 0, 0.4, {{list, 1}, report_, tools_});
  return box;
}

QWidget* frmTags::MakeFields() {
  fields_ = new TagFieldsPanel(draft_, *look_);
  cover_ = new TagCoverPanel(draft_, tags_, *look_);
  const auto touched = [this] {
    tools_->ShowChanges();
    ShowState();
  };
  connect(fields_, &TagFieldsPanel::Touched, this, touched);
  connect(cover_, &TagCoverPanel::Touched, this, touched);
  connect(cover_, &TagCoverPanel::Refused, this, [this](const QString& why) {
    told_ = why;
    ShowState();
  });
  right_ = new QWidget;
  FillColumn(*right_, 0, 0.6, {fields_, {cover_, 1}});
  return right_;
}

QWidget* frmTags::MakeFoot() {
  const auto& say = look_->say;
  state_ = Sentence("TagState", look_->skin.text);
  stop_ = PlainButton("StopJob", say.Of(TagWord::StopJob), [this] { tags_.Stop(); });
  revert_ = PlainButton("RevertTags", say.Of(TagWord::DropChanges), [this] { Revert(); });
  undo_ = PlainButton("UndoWrite", say.Of(TagWord::UndoWrite), [this] { Undo(); });
  write_ = PlainButton("WriteTags", say.Of(TagWord::WriteThem), [this] { Write(); });
  auto* foot = new QWidget;
  FillRow(*foot, 0, 0.4,
          {{state_, 1},
           stop_,
           revert_,
           undo_,
           write_,
           PlainButton("CloseTags", say.Of(TagWord::CloseTags), [this] { close(); })});
  return foot;
}

void frmTags::BringToFront() {
  show();
  setWindowState(windowState() & ~Qt::WindowMinimized);
  raise();
  activateWindow();
}

// --- What is done ---

void frmTags::Edit(std::vector<std::string> files) {
  BringToFront();
  const bool writes = tags_.Busy() && tags_.Now().work != TagStation::Work::Read;
  if (files.empty() || writes) return;
  Leave([this, files = std::move(files)] {
    if (tags_.Busy() && tags_.Now().work != TagStation::Work::Read) return;
    told_.clear();
    sentences_.clear();
    keeps_report_ = false;
    Read(files);
  });
}

std::vector<std::string> frmTags::Files() const {
  std::vector<std::string> files;
  files.reserve(draft_.Size());
  for (std::size_t i = 0; i < draft_.Size(); ++i) files.push_back(draft_.At(i).path);
  return files;
}

/// The window may be gone when it comes.
TagStation::Done frmTags::Answer(void (frmTags::*answer)(const TagStation::Report&)) {
  return [window = QPointer<frmTags>(this), answer](const TagStation::Report& report) {
    if (!window.isNull()) (window.data()->*answer)(report);
  };
}

void frmTags::Read(std::vector<std::string> files) {
  draft_.Clear();
  tags_.Read(
      std::move(files),
      [window = QPointer<frmTags>(this)](const std::string& path, catalogue::TagSheet sheet) {
        if (!window.isNull()) window->draft_.Add(path, std::move(sheet));
      },
      Answer(&frmTags::WereRead));
  ShowDraft();
}

void frmTags::ReadAgain() {
  keeps_report_ = true;
  Read(Files());
}

void frmTags::WereRead(const TagStation::Report& report) {
  for (const auto& [path, sheet, edit, cover] : std::exchange(unwritten_, {})) {
    for (std::size_t i = 0; i < draft_.Size(); ++i) {
      if (draft_.At(i).path != path) continue;
      for (std::size_t place = 0; place < catalogue::kTagFields; ++place) {
        const auto field = static_cast<catalogue::TagField>(place);
        if (edit[field]) draft_.Set(i, field, *edit[field]);
      }
    }
  }
  if (!std::exchange(keeps_report_, false) || !report.sentences.empty()) ShowReport(report, {});
  ShowDraft();
}

void frmTags::Write() {
  if (tags_.Busy() || !Changed()) return;
  std::vector<TagStation::Change> changes;
  for (std::size_t i = 0; i < draft_.Size(); ++i) {
    if (draft_.IsTouched(i)) changes.push_back({draft_.At(i).path, draft_.At(i).edit});
  }
  tags_.Write(std::move(changes), draft_.WantedCover(), Answer(&frmTags::Written));
  ShowState();
}

void frmTags::Written(const TagStation::Report& report) {
  ShowReport(report, look_->say.Count(TagWord::TagsWritten, report.done));
  // What could not be written stays as it was typed.
  unwritten_.clear();
  const std::set<std::string> written(report.written.begin(), report.written.end());
  for (std::size_t i = 0; i < draft_.Size(); ++i) {
    if (draft_.IsTouched(i) && !written.contains(draft_.At(i).path)) unwritten_.push_back(draft_.At(i));
  }
  ReadAgain();
}

void frmTags::Undo() {
  if (tags_.Busy() || tags_.CanUndo() == 0) return;
  if (Changed()) return Leave([this] { Undo(); });
  tags_.Undo(Answer(&frmTags::Undone));
  ShowState();
}

void frmTags::Undone(const TagStation::Report& report) {
  ShowReport(report, look_->say.Count(TagWord::TagsUndone, report.done));
  ReadAgain();
}

void frmTags::AskRename() {
  const auto wanted =
      std::count_if(model_->Names().begin(), model_->Names().end(), [](const catalogue::PlannedName& name) {
        return name.state == catalogue::PlannedName::State::Renamed;
      });
  if (tags_.Busy() || wanted == 0) return;
  Ask(QStringLiteral("RenameBox"), look_->say.Count(TagWord::AskRename, wanted),
      look_->say(TagWord::RenameThem), [this] { Rename(); });
}

void frmTags::Rename() {
  if (tags_.Busy()) return;
  std::vector<catalogue::PlannedName> names;
  for (const catalogue::PlannedName& name : model_->Names()) {
    if (name.state == catalogue::PlannedName::State::Renamed) names.push_back(name);
  }
  tags_.Rename(std::move(names), Answer(&frmTags::Renamed));
  ShowState();
}

void frmTags::Renamed(const TagStation::Report& report) {
  for (const catalogue::PlannedName& name : report.renamed) draft_.Renamed(name.from, name.to);
  ShowReport(report, look_->say.Count(TagWord::FilesRenamed, report.done));
  ShowDraft();
}

void frmTags::Revert() {
  draft_.RevertAll();
  ShowDraft();
}

// --- What is seen ---

void frmTags::ShowDraft() {
  if (body_ == nullptr) return;
  model_->Renew();
  fields_->ShowAll();
  cover_->Show();
  report_->Show(look_->say.Count(TagWord::LeftAsTheyWere, sentences_.size()), sentences_);
  ShowState();
}

void frmTags::ShowState() {
  if (body_ == nullptr) return;
  const auto& say = look_->say;
  const TagStation::Progress now = tags_.Now();
  const bool busy = now.work != TagStation::Work::None;
  const std::size_t touched = busy ? 0 : draft_.Touched();
  constexpr TagWord kWorks[] = {TagWord::TagsRead, TagWord::ReadingTags, TagWord::WritingTags,
                                TagWord::UndoingTags, TagWord::RenamingFiles};
  QString text = touched > 0 ? say.Count(TagWord::TagsToWrite, draft_.Size(), touched)
                             : say.Count(TagWord::TagsRead, draft_.Size());
  if (busy) text = say(kWorks[static_cast<std::size_t>(now.work)]).arg(now.done).arg(now.total);
  if (!busy && !told_.isEmpty()) text = told_ + QLatin1Char(' ') + text;
  state_->Show(text);
  stop_->setVisible(busy);
  right_->setEnabled(!busy && draft_.Size() > 0);
  tools_->setEnabled(!busy && draft_.Size() > 0);
  write_->setEnabled(touched > 0);
  revert_->setEnabled(touched > 0);
  undo_->setEnabled(!busy && tags_.CanUndo() > 0);
  setWindowModified(touched > 0);
}

void frmTags::ShowReport(const TagStation::Report& report, const QString& told) {
  sentences_ = report.sentences;
  told_ = told;
  if (report.stopped)
    told_ += (told_.isEmpty() ? QString() : QStringLiteral(" ")) + look_->say(TagWord::NotAllDone);
  ShowDraft();
}

void frmTags::ShowFrame() {
  if (tags_.Busy() && isVisible()) ShowState();
}

// --- Leaving ---

void frmTags::Ask(const QString& name, const QString& question, const QString& yes,
                  std::function<void()> then) {
  if (auto* open = findChild<MessageBox*>(name)) delete open;
  auto* box = new MessageBox(name, question, *this);
  connect(box->AddButton(name + QStringLiteral("Yes"), yes), &QPushButton::clicked, this, std::move(then));
  box->AddButton(name + QStringLiteral("No"), look_->say(Say::DialogCancel));
  box->ShowOverLists(*this);
}

void frmTags::Leave(std::function<void()> then) {
  if (!Changed()) return then();
  BringToFront();
  Ask(QStringLiteral("DropTagsBox"), look_->say(TagWord::AskDropTags), look_->say(TagWord::DropTags),
      [this, then = std::move(then)] {
        Revert();
        then();
      });
}

void frmTags::closeEvent(QCloseEvent* event) {
  if (Changed()) {
    event->ignore();
    return Leave([this] { close(); });
  }
  tags_.Leave();
  event->accept();
  Q_EMIT Left();
}

bool frmTags::eventFilter(QObject* watched, QEvent* event) {
  const bool pressed = event->type() == QEvent::KeyPress;
  auto* widget = qobject_cast<QWidget*>(watched);
  if ((!pressed && event->type() != QEvent::ShortcutOverride) || widget == nullptr ||
      widget->window() != this)
    return QWidget::eventFilter(watched, event);
  const auto& key = static_cast<const QKeyEvent&>(*event);
  const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
  const bool writes = enter && key.modifiers().testFlag(Qt::ControlModifier);
  const bool undoes = key.matches(QKeySequence::Undo) && !CanTakeBack(widget);
  const bool closes = key.key() == Qt::Key_Escape;
  if (!writes && !undoes && !closes) return QWidget::eventFilter(watched, event);
  if (!pressed) {
    event->accept();  // else the main window's shortcut of the same key would have it
    return true;
  }
  if (writes) Write();
  if (undoes) Undo();
  if (closes) close();
  return true;
}

}  // namespace ui
