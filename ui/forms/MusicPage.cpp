// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MusicPage.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/forms/BatchBar.h"
#include "ui/forms/Dialogs.h"
#include "ui/forms/ListenBar.h"
#include "ui/forms/SearchLine.h"
#include "ui/models/KeyMap.h"
#include "ui/models/TrackModel.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/ListenButton.h"
#include "ui/widgets/ReportList.h"
#include "ui/widgets/TrackGrid.h"

namespace ui {
namespace {

constexpr const char* kMasks = "*.mp3 *.ogg *.flac *.wma *.wav *.m4a";

QPushButton* PlainButton(const QString& caption) {
  auto* button = new QPushButton(caption);
  SetKind(*button, "plain");
  return button;
}

}  // namespace

MusicPage::MusicPage(app::Workstation& workstation, ListenBar& listen, BatchBar& batch, const Look& look,
                     QWidget* parent)
    : DropSurface(look.skin.panel, parent),
      workstation_(workstation),
      table_(workstation.Catalogue()),
      lists_(workstation.Lists()),
      look_(look) {
  Name(*this, QStringLiteral("MusicPage"), look.say(Say::Music));
  setAcceptDrops(true);
  model_ = new TrackModel(table_, TableId::Catalogue, CatalogueShape(), look, this);
  model_->MarkPlayed([this](std::string_view filename) { return lists_.WasPlayed(filename); });
  model_->MarkMissing([this](std::string_view filename) { return workstation_.IsMissing(filename); });
  grid_ = new TrackGrid(*model_, look.skin);
  Name(*grid_, QStringLiteral("Catalogue"), look.say(Say::Catalogue), look.say(Say::CatalogueTip));
  connect(grid_, &TrackGrid::Entered, this, [this] { Q_EMIT Entered(TableId::Catalogue); });
  connect(grid_, &TrackGrid::Chosen, this, [this](int row) {
    Q_EMIT RowChosen({TableId::Catalogue, {row}});
  });
  connect(grid_, &TrackGrid::DeleteWanted, this, &MusicPage::DeleteWanted);
  empty_ = new QLabel(look.say(Say::EmptyCatalogue));
  Name(*empty_, QStringLiteral("EmptyCatalogue"), {});
  SetFontEm(*empty_, 1.4);
  SetTextColour(*empty_, look.skin.dim);
  empty_->setAlignment(Qt::AlignCenter);
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0.4, 0.3);
  rows->addLayout(MakeHead(listen));
  rows->addWidget(&listen);
  search_ = new SearchLine(QStringLiteral("Search"), lists_.Search(), *model_, *grid_, {}, look);
  rows->addWidget(search_);
  rows->addWidget(grid_, 1);
  rows->addWidget(empty_, 1);
  progress_ = new ElidedLabel;
  Name(*progress_, QStringLiteral("AddProgress"), {});
  SetTextColour(*progress_, look.skin.dim);
  progress_->hide();
  rows->addWidget(progress_);
  rows->addWidget(&batch);
  report_ = new ReportList(QStringLiteral("Refused"), look);
  rows->addWidget(report_);
  ShowCount();
}

QHBoxLayout* MusicPage::MakeHead(ListenBar& listen) {
  const auto& say = look_.say;
  auto* row = new QHBoxLayout;
  SetSpacingEm(*row, 0, 0.4);
  count_ = new QLabel;
  SetFontEm(*count_, 1.1, Weight::Bold);
  Name(*count_, QStringLiteral("TrackCount"), {});
  row->addWidget(count_);
  row->addStretch(1);
  row->addWidget(&listen.Button());
  for (const int deck : {1, 2}) {
    QPushButton* load = PlainButton(say(Say::LoadOn).arg(deck));
    Name(*load, QStringLiteral("LoadOnDeck%1").arg(deck), say(Say::LoadOnTip).arg(deck),
         say(Say::KeyHint).arg(say(Say::LoadOnTip).arg(deck), KeyText(KeyOf(Command::Load, deck))));
    connect(load, &QPushButton::clicked, this, [this, deck] { Q_EMIT RowWanted(deck); });
    row->addWidget(load);
  }
  QPushButton* add = PlainButton(say(Say::AddFiles));
  Name(*add, QStringLiteral("AddFiles"), say(Say::AddFiles), say(Say::AddFilesTip));
  connect(add, &QPushButton::clicked, this, &MusicPage::AskForFiles);
  row->addWidget(add);
  delete_ = PlainButton(say(Say::DeleteTracks));
  Name(*delete_, QStringLiteral("DeleteTracks"), say(Say::DeleteTracksName), say(Say::DeleteTracksTip));
  connect(delete_, &QPushButton::clicked, this, &MusicPage::DeleteWanted);
  row->addWidget(delete_);
  return row;
}

void MusicPage::Show(const app::WorkstationView& view) {
  model_->Sync();
  model_->ShowDecks(view);
  model_->ShowPlayed(lists_.PlayedFiles());
  model_->ShowMissing(workstation_.MissingChecks());
  search_->Show();
  ShowCount();
}

void MusicPage::ShowCount() {
  delete_->setEnabled(grid_->selectionModel()->hasSelection());
  const int rows = table_.Rows();
  if (rows == shown_rows_) return;
  shown_rows_ = rows;
  count_->setText(rows == 1 ? look_.say(Say::OneTrack) : look_.say(Say::Tracks).arg(rows));
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
  if (progress.total == 0) return;
  progress_->show();
  progress_->Show(look_.say(Say::AddingFiles).arg(progress.done).arg(progress.total));
}

void MusicPage::ShowAdded(int files, int rows, const std::vector<std::string>& refused) {
  const auto& say = look_.say;
  QString text = rows == 0 ? say(Say::AddedNone) : rows == 1 ? say(Say::AddedOne) : say(Say::Added).arg(rows);
  const int known = files - rows - static_cast<int>(refused.size());
  if (known > 0) {
    text += QLatin1Char(' ') + (known == 1 ? say(Say::AlreadyThereOne) : say(Say::AlreadyThere).arg(known));
  }
  progress_->show();
  progress_->Show(text);
  const bool one = refused.size() == 1;
  report_->Show(one ? say(Say::LeftOutOne) : say(Say::LeftOut).arg(refused.size()), refused);
}

void MusicPage::ShowDeleted(int rows, const std::vector<std::string>& kept) {
  const auto& say = look_.say;
  Reload();
  progress_->show();
  progress_->Show(rows == 1 ? say(Say::DeletedOne) : say(Say::Deleted).arg(rows));
  const bool one = kept.size() == 1;
  report_->Show(one ? say(Say::NotDeletedOne) : say(Say::NotDeleted).arg(kept.size()), kept);
}

// Not modal: the decks stay in reach while somebody looks for files.
void MusicPage::AskForFiles() {
  if (dialog_.isNull()) dialog_ = MakeDialog();
  ShowDialog(*dialog_, *this);
  dialog_->raise();
  dialog_->activateWindow();
}

QFileDialog* MusicPage::MakeDialog() {
  QFileDialog* dialog =
      MakeAddDialog(*this, look_, look_.say(Say::MusicFiles), kMasks,
                    [this](std::vector<std::string> paths) { Q_EMIT FilesWanted(std::move(paths)); });
  dialog->setObjectName(QStringLiteral("AddFilesDialog"));
  BeginBeside(*dialog, table_.Cell(grid_->ChosenRow(), catalogue::track::kFilename));
  return dialog;
}

}  // namespace ui
