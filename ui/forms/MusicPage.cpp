// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MusicPage.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "app/Collections.h"
#include "app/WorkstationView.h"
#include "app/lists/ListStation.h"
#include "ui/forms/AddingBar.h"
#include "ui/forms/BatchBar.h"
#include "ui/forms/Dialogs.h"
#include "ui/forms/ListButtons.h"
#include "ui/forms/ListenBar.h"
#include "ui/forms/Menus.h"
#include "ui/forms/SearchLine.h"
#include "ui/models/KeyMap.h"
#include "ui/models/TrackModel.h"
#include "ui/models/TrackText.h"
#include "ui/strings/ListWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/ListenButton.h"
#include "ui/widgets/ReportList.h"
#include "ui/widgets/TrackGrid.h"

namespace ui {

MusicPage::MusicPage(app::Collections& collections, app::ListStation& lists, ListenBar& listen,
                     BatchBar& batch, const Look& look, QWidget* parent)
    : DropSurface(look.skin.panel, parent),
      collections_(collections),
      table_(collections.Music().Table()),
      lists_(lists),
      look_(look) {
  Name(*this, "MusicPage", look.say(Say::Music));
  setAcceptDrops(true);
  model_ = new TrackModel(table_, TableId::Catalogue, CatalogueShape(), look, this);
  model_->MarkPlayed([this](std::string_view filename) { return lists_.WasPlayed(filename); });
  model_->MarkMissing([this](std::string_view filename) { return collections_.Missing().Has(filename); });
  grid_ = new TrackGrid(*model_, look.skin);
  Name(*grid_, "Catalogue", look.say.Of(Say::Catalogue));
  connect(grid_, &TrackGrid::Entered, this, [this] { Q_EMIT Entered(TableId::Catalogue); });
  connect(grid_, &TrackGrid::Chosen, this, [this](int row) {
    Q_EMIT RowChosen({TableId::Catalogue, {row}});
  });
  connect(grid_, &TrackGrid::RemoveWanted, this, &MusicPage::RemoveWanted);
  empty_ = new QLabel(look.say(Say::EmptyCatalogue));
  Name(*empty_, "EmptyCatalogue");
  SetFontEm(*empty_, 1.4);
  SetTextColour(*empty_, look.skin.dim);
  empty_->setAlignment(Qt::AlignCenter);
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0.4, 0.3);
  rows->addLayout(MakeHead(listen));
  rows->addWidget(&listen);
  search_ = new SearchLine(QStringLiteral("Search"), lists_.Search(), *model_, *grid_,
                           {look.say(ListWord::FindHint), look.say.Tip(ListWord::Find), {}}, look);
  rows->addWidget(search_);
  rows->addWidget(grid_, 1);
  rows->addWidget(empty_, 1);
  adding_ = new AddingBar(QStringLiteral("Add"), AddingBar::Width::Wide, look);
  connect(adding_, &AddingBar::StopWanted, this,
          [this] { collections_.Intake().Stop(app::ListId::Catalogue); });
  rows->addWidget(adding_);
  rows->addWidget(&batch);
  report_ = new ReportList(QStringLiteral("Refused"), look);
  rows->addWidget(report_);
  ShowCount();
}

QHBoxLayout* MusicPage::MakeHead(ListenBar& listen) {
  const auto& say = look_.say;
  auto* row = new QHBoxLayout;
  SetSpacingEm(*row, 0, 0.4);
  count_ = Reading("TrackCount");
  SetFontEm(*count_, 1.1, Weight::Bold);
  row->addWidget(count_);
  row->addStretch(1);
  row->addWidget(&listen.Button());
  for (const int deck : {1, 2}) {
    const QString tip = say(Say::LoadOnTip).arg(deck);
    row->addWidget(PlainButton(
        QStringLiteral("LoadOnDeck%1").arg(deck),
        {say(Say::LoadOn).arg(deck), tip, say(Say::KeyHint).arg(tip, KeyText(KeyOf(Command::Load, deck)))},
        [this, deck] { Q_EMIT RowWanted(deck); }));
  }
  buttons_ = new ListButtons(QStringLiteral("Music"),
                             {say(Say::AddFilesTitle), say(Say::AddFilesTip), say(Say::DeleteTracksName)},
                             *grid_, look_);
  connect(buttons_, &ListButtons::FilesWanted, this, &MusicPage::AskForFiles);
  connect(buttons_, &ListButtons::FolderWanted, this, &MusicPage::AskForFolder);
  connect(buttons_, &ListButtons::RemoveWanted, this, &MusicPage::RemoveWanted);
  connect(buttons_, &ListButtons::DeleteWanted, this, &MusicPage::DeleteWanted);
  connect(buttons_, &ListButtons::BringBackWanted, this, &MusicPage::BringBackWanted);
  buttons_->PutInto(*row);
  menu_ = new ContextMenu(*grid_, QStringLiteral("MusicMenu"));
  menu_->AddLast([this](QMenu& menu, const QPoint&) { buttons_->FillRemove(menu); });
  return row;
}

void MusicPage::Show(const app::WorkstationView& view) {
  model_->Sync();
  model_->ShowDecks(view);
  model_->ShowPlayed(lists_.PlayedFiles());
  model_->ShowMissing(collections_.Missing().Answers());
  search_->Show();
  ShowCount();
  ReadRowsInSight();
}

void MusicPage::ReadRowsInSight() {
  const app::TableSearch& search = lists_.Search();
  const bool searching = isVisible() && !search.Query().empty() && !search.Busy();
  lists_.ShowRows(searching ? grid_->RowsInSight() : std::vector<int>());
  if (std::exchange(filled_, lists_.FilledCells()) != filled_) grid_->viewport()->update();
}

void MusicPage::ShowCount() {
  const int rows = table_.Rows();
  if (rows == shown_rows_) return;
  shown_rows_ = rows;
  count_->setText(look_.say.Count(Say::Tracks, rows));
  grid_->setVisible(rows > 0);
  search_->setVisible(rows > 0);
  empty_->setVisible(rows == 0);
}

void MusicPage::TakeFocus() {
  grid_->setFocus();
}

void MusicPage::Find() {
  search_->TakeFocus();
}

int MusicPage::ChosenRow() const {
  return grid_->ChosenRow();
}

bool MusicPage::ChosenLacksAnalysis() const {
  return ChosenCount() == 1 && !WasAnalysed(table_, ChosenRow());
}

int MusicPage::ChosenCount() const {
  int rows = 0;
  for (const QItemSelectionRange& range : grid_->selectionModel()->selection()) rows += range.height();
  return rows;
}

void MusicPage::SetActive(bool active) {
  grid_->SetActive(active);
}

TrackRows MusicPage::ChosenRows() const {
  return {TableId::Catalogue, grid_->ChosenRows()};
}

void MusicPage::ChooseRow(int row) {
  model_->Sync();
  ShowCount();
  grid_->ChooseRow(row);
}

void MusicPage::Reload() {
  const int chosen = grid_->ChosenRow();
  model_->Reload();
  ShowCount();
  grid_->ChooseRow(chosen);
}

void MusicPage::ShowAdding(const app::AddingProgress& progress) {
  adding_->Show(progress);
}

void MusicPage::ShowAdded(const app::IntakeOutcome& outcome) {
  const auto& say = look_.say;
  const int rows = outcome.rows;
  const QString text = rows == 0 ? say(Say::AddedNone) : say.Count(Say::Added, rows);
  adding_->Tell(QStringList{text, adding_->TextOf(outcome)}.join(QLatin1Char(' ')).trimmed());
  report_->Show(LeftOutText(outcome, say), outcome.refused);
}

void MusicPage::ShowDeleted(int rows, const std::vector<std::string>& kept) {
  const auto& say = look_.say;
  Reload();
  adding_->Tell(rows > 0 ? say.Count(Say::Deleted, rows) : QString());
  report_->Show(say.Count(Say::NotDeleted, kept.size()), kept);
}

void MusicPage::AskForFolder() {
  if (!dialog_.isNull()) dialog_->close();
  dialog_ = MakeAddFolderDialog(
      *this, look_, [this](std::vector<std::string> paths) { Q_EMIT FilesWanted(std::move(paths)); });
  dialog_->setObjectName(QStringLiteral("AddFolderDialog"));
  BeginBeside(*dialog_, table_.Cell(grid_->ChosenRow(), catalogue::track::kFilename));
  ShowDialog(*dialog_, *this);
}

// Not modal: the decks stay in reach while somebody looks for files.
void MusicPage::AskForFiles() {
  if (!dialog_.isNull()) dialog_->close();
  dialog_ = MakeDialog();
  ShowDialog(*dialog_, *this);
  dialog_->raise();
  dialog_->activateWindow();
}

QFileDialog* MusicPage::MakeDialog() {
  QFileDialog* dialog =
      MakeAddDialog(*this, look_, look_.say(Say::MusicFiles), MasksText(catalogue::ScanMode::Music),
                    [this](std::vector<std::string> paths) { Q_EMIT FilesWanted(std::move(paths)); });
  dialog->setObjectName(QStringLiteral("AddFilesDialog"));
  BeginBeside(*dialog, table_.Cell(grid_->ChosenRow(), catalogue::track::kFilename));
  return dialog;
}

}  // namespace ui
