// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/PlaylistPanel.h"

#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/Collections.h"
#include "app/WorkstationView.h"
#include "app/lists/ListStation.h"
#include "support/Text.h"
#include "ui/forms/AddingBar.h"
#include "ui/forms/Dialogs.h"
#include "ui/forms/Menus.h"
#include "ui/models/TrackModel.h"
#include "ui/strings/Decode.h"
#include "ui/strings/FileWords.h"
#include "ui/strings/ListWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/ReportList.h"
#include "ui/widgets/TrackGrid.h"

namespace ui {
namespace {

/// As they were given, line by line.
constexpr const char* kOpenFilter =
    "All Files (*.*)\nMP3 Files (*.MP3)\nOGG Files (*.OGG)\nFLAC Files (*.FLAC)\nWindows WMA Files (*.WMA)\n"
    "WAV Files (*.WAV)\nTolven's PlayList (*TPL)\nWinamp M3U Playlist (*.M3U)\nWinamp M3U8 Playlist (*.M3U8)";
constexpr const char* kSaveFilter = "Tolven's PlayList (*.TPL)";

/// "48:10", or "3:05:00" from an hour on.
std::string TotalText(std::int64_t seconds) {
  constexpr std::int64_t kHour = 3600;
  const std::string rest = support::FormatMinutes(seconds % kHour);
  return seconds < kHour ? rest : std::to_string(seconds / kHour) + ":" + rest;
}

}  // namespace

PlaylistPanel::PlaylistPanel(int number, app::Collections& collections, app::ListStation& lists, Width width,
                             const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent),
      collections_(collections),
      lists_(lists),
      number_(number),
      id_(PlaylistId(number)),
      list_(app::PlaylistNumber(number)),
      table_(collections.Playlist(number)),
      look_(look),
      counted_(table_.Columns()) {
  Name(*this, QStringLiteral("Playlist%1").arg(number), look.say(Say::Playlist).arg(number));
  if (number <= 2) SetStripe(look.skin.Deck(number));
  model_ = new TrackModel(table_, id_, PlaylistShape(), look, this);
  model_->MarkPlayed([this](std::string_view filename) { return lists_.WasPlayed(filename); });
  model_->MarkMissing([this](std::string_view filename) { return collections_.Missing().Has(filename); });
  grid_ = new TrackGrid(*model_, look.skin);
  grid_->TakeDrops();
  grid_->SetHint(look.say(Say::EmptyPlaylist));
  Name(*grid_, QStringLiteral("PlayListView%1").arg(number), look.say(Say::Playlist).arg(number),
       look.say(Say::PlaylistTip));
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0.4, 0.3);
  rows->addLayout(MakeHead());
  rows->addWidget(grid_, 1);
  adding_ = new AddingBar(QStringLiteral("Playlist%1Add").arg(number), AddingBar::Width::Narrow, look);
  connect(adding_, &AddingBar::StopWanted, this, [this] { collections_.Intake().Stop(list_); });
  rows->addWidget(adding_);
  report_ = new ReportList(QStringLiteral("Playlist%1LeftOut").arg(number), look);
  rows->addWidget(report_);
  rows->addLayout(MakeButtons());
  if (width == Width::Given) setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  menu_ = new ContextMenu(*grid_, QStringLiteral("Playlist%1Rows").arg(number));
  menu_->AddLast([this](QMenu& menu, const QPoint&) {
    AddAct(menu, QStringLiteral("Playlist%1RemoveRows").arg(number_), look_.say(FileWord::RemoveFromList),
           Qt::Key_Delete, [this] { RemoveChosen(); })
        ->setEnabled(grid_->selectionModel()->hasSelection());
  });
  Listen();
  ShowCount();
}

QHBoxLayout* PlaylistPanel::MakeHead() {
  auto* head = new QLabel(look_.say(Say::Playlist).arg(number_));
  Name(*head, QStringLiteral("Playlist%1Head").arg(number_));
  SetFontEm(*head, 1.1, Weight::Bold);
  SetHeightEm(*head, kListHeadEms);
  count_ = Reading(QStringLiteral("Playlist%1Count").arg(number_));
  SetTextColour(*count_, look_.skin.dim);
  return Row(0.8, {head, {count_, 1}});
}

QHBoxLayout* PlaylistPanel::MakeButtons() {
  const auto& say = look_.say;
  open_ = PlainButton(QStringLiteral("Playlist%1Open").arg(number_),
                      {say(ListWord::Open) + QStringLiteral(" ▾"), say(ListWord::OpenName).arg(number_),
                       say(ListWord::OpenTip)},
                      [this] { ShowMenu(); });
  save_ = PlainButton(QStringLiteral("Playlist%1Save").arg(number_),
                      {say(ListWord::Save), say(ListWord::SaveName).arg(number_), say(ListWord::SaveTip)},
                      [this] { AskWhereToSave(); });
  remove_ =
      PlainButton(QStringLiteral("Playlist%1Remove").arg(number_),
                  {say(Say::RemoveRows), say(Say::RemoveRowsName).arg(number_), say(Say::RemoveRowsTip)},
                  [this] { RemoveChosen(); });
  return Row(0.3, {open_, save_, Part::Room(), remove_});
}

void PlaylistPanel::ShowMenu() {
  QMenu* menu = NewMenu(*this, QStringLiteral("Playlist%1Menu").arg(number_));
  menu->addAction(look_.say(ListWord::OpenFile), this, &PlaylistPanel::AskForFile);
  menu->addAction(look_.say(FileWord::AddFolder), this, &PlaylistPanel::AskForFolder)
      ->setObjectName(QStringLiteral("Playlist%1AddFolder").arg(number_));
  QMenu* history = menu->addMenu(look_.say(ListWord::History));
  history->setFont(font());
  QAction* none = history->addAction(look_.say(ListWord::NoHistory));
  none->setEnabled(false);
  // Looked for each time, because tonight's may be new.
  lists_.ListHistory([this, none, list = QPointer<QMenu>(history)](const std::vector<std::string>& evenings) {
    if (list.isNull()) return;
    for (const std::string& evening : evenings) {
      list->addAction(Decode(evening), this, [this, evening] { Open(lists_.HistoryPath(evening)); });
    }
    none->setVisible(evenings.empty());
  });
  menu->popup(open_->mapToGlobal(QPoint(0, open_->height())));
}

// Not modal: the decks stay in reach while somebody looks for files.
void PlaylistPanel::AskForFile() {
  if (!dialog_.isNull()) dialog_->close();
  dialog_ = MakeFileDialog(*this, look_, QFileDialog::ExistingFile, Say::AddFilesTitle, Say::DialogAdd);
  dialog_->setObjectName(QStringLiteral("Playlist%1OpenDialog").arg(number_));
  dialog_->setWindowTitle(look_.say(ListWord::OpenTitle).arg(number_));
  dialog_->setLabelText(QFileDialog::Accept, look_.say(ListWord::Open));
  dialog_->setNameFilters(QString::fromLatin1(kOpenFilter).split(QLatin1Char('\n')));
  dialog_->selectFile(QStringLiteral("*.*"));
  connect(dialog_, &QFileDialog::fileSelected, this,
          [this](const QString& name) { Open(QFile::encodeName(name).toStdString()); });
  ShowDialog(*dialog_, *this);
}

void PlaylistPanel::AskWhereToSave() {
  if (!dialog_.isNull()) dialog_->close();
  dialog_ = MakeFileDialog(*this, look_, QFileDialog::AnyFile, Say::AddFilesTitle, Say::DialogAdd);
  dialog_->setObjectName(QStringLiteral("Playlist%1SaveDialog").arg(number_));
  dialog_->setWindowTitle(look_.say(ListWord::SaveTitle).arg(number_));
  dialog_->setAcceptMode(QFileDialog::AcceptSave);
  dialog_->setLabelText(QFileDialog::Accept, look_.say(ListWord::Save));
  dialog_->setDefaultSuffix(QStringLiteral("tpl"));
  dialog_->setNameFilter(QLatin1String(kSaveFilter));
  dialog_->selectFile(QStringLiteral("*.tpl"));
  connect(dialog_, &QFileDialog::fileSelected, this, [this](const QString& name) {
    if (name.contains(QLatin1Char('*'))) return;  // the pattern stands there as it was
    const std::filesystem::path path(QFile::encodeName(name).toStdString());
    lists_.SavePlaylist(number_, path, [panel = QPointer<PlaylistPanel>(this)](const std::string& failure) {
      if (panel.isNull()) return;
      Q_EMIT panel->Told(failure.empty() ? panel->look_.say(ListWord::Saved).arg(panel->number_)
                                         : Decode(failure));
    });
  });
  ShowDialog(*dialog_, *this);
}

void PlaylistPanel::Open(const std::string& path) {
  Give({.list = list_, .source = app::IntakeOrder::Source::Opened, .paths = {path}});
}

void PlaylistPanel::Give(app::IntakeOrder order) {
  collections_.Intake().Add(std::move(order),
                            [panel = QPointer<PlaylistPanel>(this)](const app::IntakeOutcome& outcome) {
                              if (!panel.isNull()) panel->ShowAdded(outcome);
                            });
}

void PlaylistPanel::ShowAdded(const app::IntakeOutcome& outcome) {
  const int row = table_.FindRow(catalogue::track::kFilename, outcome.first);
  Reload(outcome.rows > 0 ? row : 0);
  adding_->Tell(adding_->TextOf(outcome));
  report_->Show(LeftOutText(outcome, look_.say), outcome.refused);
}

void PlaylistPanel::AskForFolder() {
  if (!dialog_.isNull()) dialog_->close();
  dialog_ = MakeAddFolderDialog(*this, look_, [this](std::vector<std::string> paths) {
    Give({.list = list_, .paths = std::move(paths)});
  });
  dialog_->setObjectName(QStringLiteral("Playlist%1FolderDialog").arg(number_));
  ShowDialog(*dialog_, *this);
}

void PlaylistPanel::Listen() {
  connect(grid_, &TrackGrid::Entered, this, [this] { Q_EMIT Entered(id_); });
  connect(grid_, &TrackGrid::Chosen, this, [this](int row) { Q_EMIT RowChosen({id_, {row}}); });
  connect(grid_, &TrackGrid::RemoveWanted, this, &PlaylistPanel::RemoveChosen);
  connect(grid_, &TrackGrid::RowsDropped, this, [this](const TrackRows& rows, int before, Leaving leaving) {
    Q_EMIT RowsDropped(rows, id_, before, leaving);
  });
  connect(grid_, &TrackGrid::FilesDropped, this, [this](const std::vector<std::string>& paths, int before) {
    Give({.list = list_, .before = before > table_.Rows() ? 0 : before, .paths = paths});
  });
}

void PlaylistPanel::Show(const app::WorkstationView& view) {
  model_->Sync();
  model_->ShowDecks(view);
  model_->ShowPlayed(lists_.PlayedFiles());
  model_->ShowMissing(collections_.Missing().Answers());
  adding_->Show(collections_.Intake().Progress(list_));
  ShowCount();
  FollowDecks(view);
}

void PlaylistPanel::FollowDecks(const app::WorkstationView& view) {
  for (std::size_t deck = 0; deck < on_decks_.size(); ++deck) {
    const std::string& file = view.decks[deck].filename;
    if (file == on_decks_[deck]) continue;
    on_decks_[deck] = file;
    if (file.empty()) continue;
    grid_->BringIntoSight(table_.FindRow(catalogue::track::kFilename, file));
  }
}

void PlaylistPanel::ShowCount() {
  remove_->setEnabled(grid_->selectionModel()->hasSelection());
  const bool first = count_->text().isEmpty();
  if (!first && counted_.IsCopyOf(table_)) return;
  counted_ = table_;
  const int rows = table_.Rows();
  save_->setEnabled(rows > 0);
  if (first) count_->setText(look_.say.Count(Say::Tracks, rows));
  lists_.AddUpTimes(number_, [panel = QPointer<PlaylistPanel>(this), rows](std::int64_t seconds) {
    if (!panel.isNull()) panel->ShowTotal(rows, seconds);
  });
}

void PlaylistPanel::ShowTotal(int rows, std::int64_t seconds) {
  const QString time = Decode(TotalText(seconds));
  count_->setText(rows == 0 ? look_.say.Count(Say::Tracks, 0)
                            : look_.say.Count(ListWord::Total, rows).arg(time));
}

void PlaylistPanel::Reload(int row_to_choose) {
  model_->Reload();
  grid_->ChooseRow(row_to_choose);
  ShowCount();
}

void PlaylistPanel::TakeFocus() {
  grid_->setFocus();
}

void PlaylistPanel::SetActive(bool active) {
  grid_->SetActive(active);
}

TrackRows PlaylistPanel::ChosenRows() const {
  return {id_, grid_->ChosenRows()};
}

void PlaylistPanel::RemoveChosen() {
  const std::vector<int> rows = grid_->ChosenRows();
  if (rows.empty()) return;
  const int removed = collections_.Removed().Remove(list_, rows);
  Reload(rows.front());
  Q_EMIT Told(look_.say.Count(FileWord::Removed, removed));
}

// After its children have their sizes of type: the grid's width hangs on them.
QSize PlaylistPanel::sizeHint() const {
  const QSize hint = Surface::sizeHint();
  const QMargins margins = layout()->contentsMargins();
  return {grid_->GivenWidth() + margins.left() + margins.right(), hint.height()};
}

}  // namespace ui
