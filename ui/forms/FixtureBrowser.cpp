// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/FixtureBrowser.h"

#include <QApplication>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

#include "ui/forms/Dialogs.h"
#include "ui/strings/Decode.h"
#include "ui/strings/FixtureLibraryWords.h"
#include "ui/strings/Say.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr std::size_t kMostRows = 200;
constexpr double kBrowserEms = 44;
constexpr double kBrowserHighEms = 26;

QString RowText(const dmx::PackEntry& entry, const Strings& say) {
  return QStringLiteral("%1  %2  (%3)  –  %4")
      .arg(Decode(entry.maker), Decode(entry.model), Decode(entry.mode),
           say.Count(FixtureLibraryWord::LibraryChannels, entry.channels));
}

}  // namespace

FixtureBrowser::FixtureBrowser(app::FixturePacks& packs, const Look& look, QWidget& editor)
    : DropSurface(look.skin.panel, &editor), packs_(packs), look_(look) {
  setObjectName(QStringLiteral("FixtureBrowser"));
  setWindowFlags(Qt::Dialog);
  setWindowTitle(look.say(FixtureLibraryWord::LibraryTitle));
  setAcceptDrops(true);
  MakeControls();
  FillColumn(*this, 0.8, 0.5, {search_, {list_, 1}, state_, Row(0.5, {folder_, stop_, Part::Room(), take_})});
  connect(this, &DropSurface::FilesWanted, this, [this](const std::vector<std::string>& paths) {
    packs_.AddFiles({paths.begin(), paths.end()});
    search_->clear();
  });
}

void FixtureBrowser::MakeControls() {
  const Strings& say = look_.say;
  search_ = new QLineEdit;
  search_->setPlaceholderText(say(FixtureLibraryWord::LibrarySearch));
  search_->setClearButtonEnabled(true);
  search_->installEventFilter(this);
  Name(*search_, "FixtureSearch", say.Of(FixtureLibraryWord::LibrarySearch));
  connect(search_, &QLineEdit::textChanged, this, &FixtureBrowser::ShowRows);
  list_ = new QListWidget;
  list_->setUniformItemSizes(true);
  Name(*list_, "FixtureRows", say(FixtureLibraryWord::LibraryRows));
  connect(list_, &QListWidget::itemActivated, this, &FixtureBrowser::Take);
  connect(list_, &QListWidget::currentRowChanged, this, &FixtureBrowser::ShowButtons);
  state_ = Sentence("FixtureState", look_.skin.dim);
  take_ = PlainButton("FixtureTake", say.Of(FixtureLibraryWord::LibraryTake), [this] { Take(); });
  folder_ =
      PlainButton("FixtureFolder", say.Of(FixtureLibraryWord::LibraryFolder), [this] { ChooseFolder(); });
  stop_ = PlainButton("FixtureStop", say.Of(FixtureLibraryWord::LibraryStop), [this] { packs_.Stop(); });
}

void FixtureBrowser::Open() {
  packs_.Open();
  changes_ = 0;
  ShowFrame();
  resize(Em(*this, kBrowserEms), Em(*this, kBrowserHighEms));
  const QWidget& editor = *parentWidget()->window();
  move(editor.mapToGlobal(QPoint((editor.width() - width()) / 2, (editor.height() - height()) / 2)));
  show();
  activateWindow();
  search_->setFocus();
  search_->selectAll();
}

void FixtureBrowser::ShowFrame() {
  if (changes_ == packs_.Now().changes && changes_ != 0) return;
  changes_ = packs_.Now().changes;
  if (index_ != packs_.Index()) ShowRows();
  ShowState();
  ShowButtons();
}

void FixtureBrowser::ShowRows() {
  index_ = packs_.Index();
  auto found = dmx::FindInIndex(*index_, search_->text().toStdString(), kMostRows);
  rows_ = std::move(found.entries);
  const QSignalBlocker quiet(list_);
  list_->clear();
  for (const dmx::PackEntry* entry : rows_) list_->addItem(RowText(*entry, look_.say));
  if (found.all > rows_.size()) {
    auto* more =
        new QListWidgetItem(look_.say(FixtureLibraryWord::LibraryMore).arg(found.all - rows_.size()), list_);
    more->setFlags(Qt::NoItemFlags);
  }
  if (!rows_.empty()) list_->setCurrentRow(0);
  ShowButtons();
}

void FixtureBrowser::ShowState() {
  const app::FixturePacks::Progress& now = packs_.Now();
  const Strings& say = look_.say;
  QString text;
  if (taking_) {
    text = say(FixtureLibraryWord::LibraryBusy);
  } else if (now.busy) {
    text = say(FixtureLibraryWord::LibraryReading).arg(now.read).arg(now.files);
  } else if (index_ == nullptr || index_->entries.empty()) {
    text = say(FixtureLibraryWord::LibraryNone);
  } else {
    text = say.Count(FixtureLibraryWord::LibraryCount, index_->entries.size(), index_->fixtures);
  }
  QStringList notes;
  for (const std::string& note : packs_.Index()->notes) notes += Decode(note);
  const std::size_t left_out = packs_.Index()->left_out;
  if (left_out > 0) {
    text += QStringLiteral(" · ") + say.Count(FixtureLibraryWord::LibraryLeftOut, left_out);
  } else if (!notes.isEmpty()) {
    text += QStringLiteral(" · ") + notes.front();
  }
  SetText(*state_, text);
  state_->setToolTip(notes.join(QLatin1Char('\n')));
}

void FixtureBrowser::ShowButtons() {
  const int row = list_->currentRow();
  take_->setEnabled(!taking_ && row >= 0 && row < static_cast<int>(rows_.size()));
  stop_->setEnabled(packs_.Now().busy);
}

void FixtureBrowser::Take() {
  const int row = list_->currentRow();
  if (taking_ || row < 0 || row >= static_cast<int>(rows_.size())) return;
  taking_ = true;
  ShowState();
  ShowButtons();
  packs_.Bring(
      *rows_[static_cast<std::size_t>(row)],
      [browser = QPointer<FixtureBrowser>(this)](const support::Result<app::BroughtFixture>& brought) {
        if (browser.isNull()) return;
        browser->taking_ = false;
        browser->ShowState();
        browser->ShowButtons();
        if (!brought) return Q_EMIT browser->Refused(brought.Failure());
        if (!browser->isVisible()) return;  // nobody waits for it
        browser->hide();
        Q_EMIT browser->Brought(brought.Value());
      });
}

void FixtureBrowser::ChooseFolder() {
  QFileDialog* dialog =
      MakeFileDialog(*this, look_, QFileDialog::Directory, look_.say(FixtureLibraryWord::LibraryFolderTitle),
                     look_.say(FixtureLibraryWord::LibraryTake));
  dialog->setObjectName(QStringLiteral("FixtureFolderDialog"));
  connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& folder) {
    if (!folder.isEmpty()) packs_.ChooseFolder(QFile::encodeName(folder).toStdString());
  });
  ShowDialog(*dialog, *this);
}

bool FixtureBrowser::eventFilter(QObject* watched, QEvent* event) {
  if (watched == search_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) return Take(), true;
    if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown)
      return QApplication::sendEvent(list_, event);
  }
  return DropSurface::eventFilter(watched, event);
}

void FixtureBrowser::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return hide();
  DropSurface::keyPressEvent(event);
}

}  // namespace ui
