// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/EditorWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

#include "ui/forms/Dialogs.h"
#include "ui/forms/MessageBox.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

using SaveFirst = app::DocumentFlow::SaveFirst;

constexpr QSize kSmallestEditor(1100, 600);
constexpr double kShareOfScreen = 0.92;

}  // namespace

std::filesystem::path PathOf(const QString& name) {
  return QFile::encodeName(name).toStdString();
}

QString TextOf(const std::filesystem::path& path) {
  return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

EditorWindow::EditorWindow(const char* name, app::Workstation& workstation, const support::Clock& clock)
    : workstation_(workstation),
      clock_(clock),
      flow_({[this] { return Changed(); }, [this] { return Refusal(); }, [this] { return Question(); },
             [this](const Path& path, std::function<void(bool)> done) { Write(path, std::move(done)); },
             [this](const Path& path) { Read(path); },
             [this] {
               path_.clear();
               Clear();
               ShowDocument();
             }},
            {[this](const auto& answer) { AskSaveFirst(answer); },
             [this](const std::string& question, const std::function<void(bool)>& answer) {
               Ask(objectName() + QStringLiteral("Mend"), Decode(question), Word(EditorWord::Yes),
                   Word(EditorWord::No), answer);
             },
             [this](const auto& answer) { ChooseToOpen(answer); },
             [this](const auto& answer) { ChooseToSave(answer); },
             [this](const std::string& text) { Tell(Decode(text)); }}) {
  setObjectName(QLatin1String(name));
  setAttribute(Qt::WA_QuitOnClose, false);
  setMinimumSize(kSmallestEditor);
  resize(screen()->availableSize() * kShareOfScreen);
  const auto key = [this](QKeySequence::StandardKey keys, auto act) {
    auto* shortcut = new QShortcut(keys, this);
    connect(shortcut, &QShortcut::activated, this, act);
  };
  key(QKeySequence::Undo, [this] { Undo(), ShowDocument(); });
  key(QKeySequence::Redo, [this] { Redo(), ShowDocument(); });
  if (!QKeySequence::keyBindings(QKeySequence::Redo).contains(QKeySequence(Qt::CTRL | Qt::Key_Y))) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Y), this);
    connect(shortcut, &QShortcut::activated, this, [this] { Redo(), ShowDocument(); });
  }
  key(QKeySequence::Save, [this] { flow_.Save(); });
  key(QKeySequence::Open, [this] { flow_.Open(); });
  key(QKeySequence::New, [this] { flow_.New(); });
  qApp->installEventFilter(this);
}

void EditorWindow::ApplySheet(const Look& look, double points) {
  ClearSheet();
  look_.emplace(look);
  QFont font = this->font();
  font.setPointSizeF(points);
  setFont(font);
  body_ = new QWidget(this);
  auto* rows = new QVBoxLayout(body_);
  SetSpacingEm(*rows, 0.5, 0.5);
  MakeBar();
  rows->addLayout(bar_);
  QWidget* made = MakeBody();
  QWidget* first = made->focusWidget();  // forgotten as soon as the body moves into the window
  rows->addWidget(made, 1);
  if (layout() == nullptr) {
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
  }
  layout()->addWidget(body_);
  ApplyBaseSize(*this, points);
  ShowDocument();
  if (first != nullptr) first->setFocus();
}

void EditorWindow::ClearSheet() {
  for (MessageBox* box : findChildren<MessageBox*>()) delete box;
  delete dialog_;
  // What is being typed belongs to the document, which takes it while its fields are still there.
  QWidget* const typing = focusWidget();
  if (body_ != nullptr && typing != nullptr && body_->isAncestorOf(typing)) typing->clearFocus();
  delete body_;
  body_ = nullptr;
}

void EditorWindow::BringToFront() {
  show();
  setWindowState(windowState() & ~Qt::WindowMinimized);
  raise();
  activateWindow();
}

void EditorWindow::Leave(std::function<void()> then) {
  flow_.Leave([this, then = std::move(then)] {
    refused_ = Changed() ? Stamp() : 0;
    if (std::exchange(drafted_, 0) != 0) workstation_.Drafts().Drop(DraftKind());
    then();
  });
}

void EditorWindow::KeepDraft() {
  constexpr auto kEvery = std::chrono::seconds(1);
  // The window may stand for some frames yet with what was refused.
  const std::uint64_t stamp = Changed() && Stamp() != refused_ ? Stamp() : 0;
  const bool lost = stamp != 0 && workstation_.Drafts().Failed(DraftKind());
  if (stamp == drafted_ && !lost) return;
  if (stamp == 0) {
    drafted_ = 0;
    return workstation_.Drafts().Drop(DraftKind());
  }
  const support::TimePoint now = clock_.Now();
  if (now < next_draft_ || !workstation_.Drafts().Keep(DraftKind(), path_.string(), DraftText())) return;
  drafted_ = stamp;
  next_draft_ = now + kEvery;
}

void EditorWindow::Restore(const app::Drafts::Draft& draft) {
  Leave([this, draft] {
    workstation_.Drafts().Restored(draft);
    // Over a file that was written since, nothing goes without being asked.
    ReadDraft(draft.text, draft.newer_file ? Path() : Path(draft.origin));
  });
}

QPushButton* EditorWindow::MakeButton(const char* name, EditorWord caption, EditorWord tip,
                                      const char* kind) {
  auto* button = new QPushButton(Word(caption));
  SetKind(*button, kind);
  Name(*button, name, Word(tip), Word(tip));
  return button;
}

void EditorWindow::MakeBar() {
  bar_ = new QHBoxLayout;
  SetSpacingEm(*bar_, 0, 0.5);
  const auto add = [this](const char* name, EditorWord caption, EditorWord tip, auto act) {
    QPushButton* button = MakeButton(name, caption, tip);
    connect(button, &QPushButton::clicked, this, act);
    bar_->addWidget(button);
    return button;
  };
  add("btnNew", EditorWord::New, EditorWord::NewTip, [this] { flow_.New(); });
  add("Open", EditorWord::Open, EditorWord::OpenTip, [this] { flow_.Open(); });
  add("Save", EditorWord::Save, EditorWord::SaveTip, [this] { flow_.Save(); });
  undo_ = add("Undo", EditorWord::Undo, EditorWord::UndoTip, [this] { Undo(), ShowDocument(); });
  redo_ = add("Redo", EditorWord::Redo, EditorWord::RedoTip, [this] { Redo(), ShowDocument(); });
}

void EditorWindow::ShowState() {
  setWindowModified(Changed());
  undo_->setEnabled(CanUndo());
  redo_->setEnabled(CanRedo());
}

void EditorWindow::ShowTitle(EditorWord form) {
  QString title = Decode(app::Caption(Word(form).toStdString()));
  if (!path_.empty()) title += QStringLiteral(" – ") + Decode(path_.filename().string());
  setWindowTitle(title + QStringLiteral("[*]"));
}

void EditorWindow::Tell(const QString& text) {
  auto* box = new MessageBox(objectName() + QStringLiteral("Message"), text, *this);
  box->AddButton(QStringLiteral("MessageClose"), look_->say(Say::Close));
  box->ShowOverLists(*this);
}

void EditorWindow::Ask(const QString& name, const QString& question, const QString& yes, const QString& no,
                       std::function<void(bool)> answer) {
  if (auto* open = findChild<MessageBox*>(name)) delete open;
  auto* box = new MessageBox(name, question, *this);
  connect(box->AddButton(name + QStringLiteral("No"), no), &QPushButton::clicked, this,
          [answer] { answer(false); });
  connect(box->AddButton(name + QStringLiteral("Yes"), yes), &QPushButton::clicked, this,
          [answer] { answer(true); });
  box->ShowOverLists(*this);
}

void EditorWindow::AskSaveFirst(const std::function<void(SaveFirst)>& answer) {
  const QString name = objectName() + QStringLiteral("SaveFirst");
  if (auto* open = findChild<MessageBox*>(name)) delete open;
  BringToFront();
  auto* box = new MessageBox(name, QStringLiteral("Save the changes?"), *this);
  const auto add = [&](const char* part, const QString& caption, SaveFirst meaning) {
    connect(box->AddButton(name + QLatin1String(part), caption), &QPushButton::clicked, this,
            [answer, meaning] { answer(meaning); });
  };
  add("Cancel", look_->say(Say::DialogCancel), SaveFirst::Cancel);
  add("No", Word(EditorWord::No), SaveFirst::No);
  add("Yes", Word(EditorWord::Yes), SaveFirst::Yes);
  box->ShowOverLists(*this);
}

QFileDialog* EditorWindow::MakeDialog(const char* name, EditorWord title, EditorWord accept) {
  delete dialog_;
  dialog_ = MakeFileDialog(*this, *look_, QFileDialog::ExistingFile, Word(title), Word(accept));
  dialog_->setObjectName(QLatin1String(name));
  return dialog_;
}

void EditorWindow::ChooseToOpen(const std::function<void(Path)>& answer) {
  const Files files = FilesOf();
  QFileDialog* dialog = MakeDialog("OpenDialog", EditorWord::OpenTitle, EditorWord::Open);
  dialog->setDirectory(TextOf(files.folder));
  dialog->setNameFilter(files.filter);
  dialog->setDefaultSuffix(files.suffix);
  connect(dialog, &QFileDialog::fileSelected, this, [answer](const QString& name) {
    if (!name.isEmpty()) answer(PathOf(name));
  });
  ShowDialog(*dialog, *this);
}

void EditorWindow::ChooseToSave(const std::function<void(Path)>& answer) {
  const Files files = FilesOf();
  QFileDialog* dialog = MakeDialog("SaveDialog", EditorWord::SaveTitle, EditorWord::Save);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  dialog->setLabelText(QFileDialog::Accept, Word(EditorWord::Save));
  dialog->setOption(QFileDialog::DontConfirmOverwrite);  // asked below, without standing in the way
  dialog->setDirectory(TextOf(files.folder));
  dialog->setNameFilter(files.filter);
  dialog->setDefaultSuffix(files.suffix);
  dialog->selectFile(path_.empty() ? files.suggested : TextOf(path_.filename()));
  connect(dialog, &QFileDialog::fileSelected, this, [this, answer](const QString& name) {
    if (name.isEmpty()) return;
    const Path path = PathOf(name);
    std::error_code failed;
    if (path == path_ || !std::filesystem::exists(path, failed)) return answer(path);
    Ask(QStringLiteral("Replace"), Word(EditorWord::AskReplace).arg(Decode(path.filename().string())),
        Word(EditorWord::Replace), look_->say(Say::DialogCancel), [answer, path](bool replace) {
          if (replace) answer(path);
        });
  });
  ShowDialog(*dialog, *this);
}

void EditorWindow::closeEvent(QCloseEvent* event) {
  if (!leaving_ && Changed()) {
    event->ignore();
    return Leave([this] {
      leaving_ = true;
      close();
    });
  }
  leaving_ = false;
  event->accept();
  Q_EMIT Left();
}

bool EditorWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    auto* widget = qobject_cast<QWidget*>(watched);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool steps = key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo) ||
                       key.keyCombination() == (Qt::CTRL | Qt::Key_Y);
    if (steps && widget != nullptr && widget->window() == this) {
      event->ignore();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace ui
