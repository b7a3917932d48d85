// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/KaraokePage.h"

#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/forms/Dialogs.h"
#include "ui/forms/SearchLine.h"
#include "ui/models/TrackModel.h"
#include "ui/strings/SongWords.h"
#include "ui/widgets/ReportList.h"
#include "ui/widgets/TrackGrid.h"

namespace ui {
namespace {

constexpr const char* kMasks = "*.mp3 *.kar *.mid *.zip *.cdg";

}  // namespace

KaraokePage::KaraokePage(const catalogue::track_table& table, app::ListDesk& lists, const Look& look,
                         QWidget* parent)
    : DropSurface(look.skin.panel, parent), table_(table), look_(look) {
  Name(*this, QStringLiteral("KaraokePage"), look.say(Say::Karaoke));
  setAcceptDrops(true);
  model_ = new TrackModel(table, std::nullopt, KaraokeShape(), look, this);
  grid_ = new TrackGrid(*model_, look.skin);
  Name(*grid_, QStringLiteral("KaraokeGrid"), look.say(Say::Karaoke), look.say(Say::KaraokeTip));
  connect(grid_, &TrackGrid::DeleteWanted, this, &KaraokePage::DeleteWanted);
  connect(grid_, &TrackGrid::Chosen, this, &KaraokePage::SongWanted);
  report_ = new ReportList(QStringLiteral("KaraokeKept"), look);
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0.4, 0.3);
  search_ = new SearchLine(QStringLiteral("KaraokeSearch"), lists.KaraokeSearch(), *model_, *grid_,
                           look.say(Say::EmptyKaraoke), look);
  rows->addLayout(MakeHead());
  rows->addWidget(search_);
  rows->addWidget(grid_, 1);
  rows->addWidget(report_);
  ShowCount();
}

QHBoxLayout* KaraokePage::MakeHead() {
  count_ = new QLabel;
  Name(*count_, QStringLiteral("KaraokeCount"), {});
  SetFontEm(*count_, 1.1, Weight::Bold);
  SetHeightEm(*count_, kListHeadEms);
  auto* add = new QPushButton(look_.say(Say::AddFiles));
  SetKind(*add, "plain");
  Name(*add, QStringLiteral("AddSongs"), look_.say(SongWord::AddSongs), look_.say(SongWord::AddSongsTip));
  connect(add, &QPushButton::clicked, this, &KaraokePage::AskForFiles);
  delete_ = new QPushButton(look_.say(Say::DeleteTracks));
  SetKind(*delete_, "plain");
  Name(*delete_, QStringLiteral("DeleteKaraoke"), look_.say(Say::DeleteKaraokeName),
       look_.say(Say::DeleteKaraokeTip));
  connect(delete_, &QPushButton::clicked, this, &KaraokePage::DeleteWanted);
  auto* row = new QHBoxLayout;
  SetSpacingEm(*row, 0, 0.4);
  row->addWidget(count_, 1);
  row->addWidget(add);
  row->addWidget(delete_);
  return row;
}

void KaraokePage::Show() {
  model_->Sync();
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
  delete_->setEnabled(grid_->selectionModel()->hasSelection());
  const int rows = table_.Rows();
  if (rows == shown_rows_) return;
  shown_rows_ = rows;
  search_->setVisible(rows > 0);
  count_->setText(rows == 1 ? look_.say(Say::OneSong) : look_.say(Say::Songs).arg(rows));
}

std::vector<int> KaraokePage::ChosenRows() const {
  return grid_->ChosenRows();
}

void KaraokePage::ShowDeleted(const std::vector<std::string>& kept) {
  Reload();
  const bool one = kept.size() == 1;
  report_->Show(one ? look_.say(Say::NotDeletedOne) : look_.say(Say::NotDeleted).arg(kept.size()), kept);
}

void KaraokePage::ShowFailure(const std::string& sentence) {
  report_->Show(look_.say(SongWord::SongNotPlayed), {sentence});
}

void KaraokePage::ShowAdded(int row, const std::vector<std::string>& refused) {
  model_->Sync();
  ShowCount();
  if (row > 0) grid_->ChooseRow(row);
  const bool one = refused.size() == 1;
  report_->Show(one ? look_.say(Say::LeftOutOne) : look_.say(Say::LeftOut).arg(refused.size()), refused);
}

// Not modal: what plays stays in reach while somebody looks for files.
void KaraokePage::AskForFiles() {
  if (dialog_.isNull()) dialog_ = MakeDialog();
  ShowDialog(*dialog_, *this);
  dialog_->raise();
  dialog_->activateWindow();
}

QFileDialog* KaraokePage::MakeDialog() {
  const auto& say = look_.say;
  QFileDialog* dialog =
      MakeAddDialog(*this, look_, say(SongWord::SongFiles), kMasks,
                    [this](std::vector<std::string> paths) { Q_EMIT FilesWanted(std::move(paths)); });
  dialog->setObjectName(QStringLiteral("AddSongsDialog"));
  dialog->setWindowTitle(say(SongWord::AddSongs));
  BeginBeside(*dialog, table_.Cell(grid_->ChosenRow(), catalogue::karaoke::kFilename));
  return dialog;
}

}  // namespace ui
