// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/KaraokePage.h"

#include <QFileDialog>
#include <QLabel>
#include <QVBoxLayout>

#include "app/lists/ListStation.h"
#include "ui/forms/AddingBar.h"
#include "ui/forms/Dialogs.h"
#include "ui/forms/ListButtons.h"
#include "ui/forms/Menus.h"
#include "ui/forms/SearchLine.h"
#include "ui/models/TrackModel.h"
#include "ui/strings/ListWords.h"
#include "ui/strings/SongWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/ReportList.h"
#include "ui/widgets/TrackGrid.h"

namespace ui {
KaraokePage::KaraokePage(const catalogue::track_table& table, app::ListStation& lists, const Look& look,
                         QWidget* parent)
    : DropSurface(look.skin.panel, parent), table_(table), lists_(lists), look_(look) {
  Name(*this, "KaraokePage", look.say(Say::Karaoke));
  setAcceptDrops(true);
  model_ = new TrackModel(table, std::nullopt, KaraokeShape(), look, this);
  model_->MarkPlayed([this](std::string_view filename) { return lists_.WasPlayed(filename); });
  grid_ = new TrackGrid(*model_, look.skin);
  Name(*grid_, "KaraokeGrid", look.say.Of(Say::Karaoke));
  connect(grid_, &TrackGrid::RemoveWanted, this, &KaraokePage::RemoveWanted);
  connect(grid_, &TrackGrid::Chosen, this, &KaraokePage::SongWanted);
  report_ = new ReportList(QStringLiteral("KaraokeKept"), look);
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0.4, 0.3);
  search_ = new SearchLine(
      QStringLiteral("KaraokeSearch"), lists.KaraokeSearch(), *model_, *grid_,
      {look.say(ListWord::FindSongHint), look.say.Tip(ListWord::FindSongHint), look.say(Say::EmptyKaraoke)},
      look);
  rows->addLayout(MakeHead());
  rows->addWidget(search_);
  rows->addWidget(grid_, 1);
  adding_ = new AddingBar(QStringLiteral("AddSongs"), AddingBar::Width::Narrow, look);
  connect(adding_, &AddingBar::StopWanted, this, &KaraokePage::StopWanted);
  rows->addWidget(adding_);
  rows->addWidget(report_);
  ShowCount();
}

QHBoxLayout* KaraokePage::MakeHead() {
  count_ = Reading("KaraokeCount");
  SetFontEm(*count_, 1.1, Weight::Bold);
  SetHeightEm(*count_, kListHeadEms);
  const auto& say = look_.say;
  buttons_ = new ListButtons(
      QStringLiteral("Songs"),
      {say(SongWord::AddSongs), say(SongWord::AddSongsTip), say(Say::DeleteKaraokeName)}, *grid_, look_);
  connect(buttons_, &ListButtons::FilesWanted, this, &KaraokePage::AskForFiles);
  connect(buttons_, &ListButtons::FolderWanted, this, &KaraokePage::AskForFolder);
  connect(buttons_, &ListButtons::RemoveWanted, this, &KaraokePage::RemoveWanted);
  connect(buttons_, &ListButtons::DeleteWanted, this, &KaraokePage::DeleteWanted);
  connect(buttons_, &ListButtons::BringBackWanted, this, &KaraokePage::BringBackWanted);
  auto* row = new QHBoxLayout;
  SetSpacingEm(*row, 0, 0.4);
  row->addWidget(count_, 1);
  buttons_->PutInto(*row);
  menu_ = new ContextMenu(*grid_, QStringLiteral("SongsMenu"));
  menu_->AddLast([this](QMenu& menu, const QPoint&) { buttons_->FillRemove(menu); });
  return row;
}

void KaraokePage::Show(const app::AddingProgress& adding) {
  model_->Sync();
  model_->ShowPlayed(lists_.PlayedFiles());
  adding_->Show(adding);
  search_->Show();
  ShowCount();
}

void KaraokePage::Find() {
  search_->TakeFocus();
}

void KaraokePage::Reload() {
  const int chosen = grid_->ChosenRow();
  model_->Reload();
  grid_->ChooseRow(chosen);
  ShowCount();
}

void KaraokePage::TakeFocus() {
  grid_->setFocus();
}

void KaraokePage::ShowCount() {
  const int rows = table_.Rows();
  if (rows == shown_rows_) return;
  shown_rows_ = rows;
  search_->setVisible(rows > 0);
  count_->setText(look_.say.Count(Say::Songs, rows));
}

std::vector<int> KaraokePage::ChosenRows() const {
  return grid_->ChosenRows();
}

void KaraokePage::ShowDeleted(const std::vector<std::string>& kept) {
  Reload();
  report_->Show(look_.say.Count(Say::NotDeleted, kept.size()), kept);
}

void KaraokePage::ShowFailure(const std::string& sentence) {
  report_->Show(look_.say(SongWord::SongNotPlayed), {sentence});
}

void KaraokePage::ShowAdded(const app::IntakeOutcome& outcome, int row) {
  model_->Sync();
  ShowCount();
  if (row > 0) grid_->ChooseRow(row);
  adding_->Tell(adding_->TextOf(outcome));
  report_->Show(LeftOutText(outcome, look_.say), outcome.refused);
}

void KaraokePage::AskForFolder() {
  if (!dialog_.isNull()) dialog_->close();
  dialog_ = MakeAddFolderDialog(
      *this, look_, [this](std::vector<std::string> paths) { Q_EMIT FilesWanted(std::move(paths)); });
  dialog_->setObjectName(QStringLiteral("AddSongFolderDialog"));
  BeginBeside(*dialog_, table_.Cell(grid_->ChosenRow(), catalogue::karaoke::kFilename));
  ShowDialog(*dialog_, *this);
}

// Not modal: what plays stays in reach while somebody looks for files.
void KaraokePage::AskForFiles() {
  if (!dialog_.isNull()) dialog_->close();
  dialog_ = MakeDialog();
  ShowDialog(*dialog_, *this);
  dialog_->raise();
  dialog_->activateWindow();
}

QFileDialog* KaraokePage::MakeDialog() {
  const auto& say = look_.say;
  QFileDialog* dialog =
      MakeAddDialog(*this, look_, say(SongWord::SongFiles), MasksText(catalogue::ScanMode::Karaoke),
                    [this](std::vector<std::string> paths) { Q_EMIT FilesWanted(std::move(paths)); });
  dialog->setObjectName(QStringLiteral("AddSongsDialog"));
  dialog->setWindowTitle(say(SongWord::AddSongs));
  BeginBeside(*dialog, table_.Cell(grid_->ChosenRow(), catalogue::karaoke::kFilename));
  return dialog;
}

}  // namespace ui
