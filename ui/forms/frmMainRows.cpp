// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Rows on their way: to decks, into playlists, off the disk.
#include <QPointer>
#include <QStackedWidget>

#include "app/Collections.h"
#include "app/Decks.h"
#include "app/tags/TagStation.h"
#include "ui/forms/DeckPanel.h"
#include "ui/forms/KaraokePage.h"
#include "ui/forms/ListenBar.h"
#include "ui/forms/MusicPage.h"
#include "ui/forms/PlaylistPanel.h"
#include "ui/forms/StatusLine.h"
#include "ui/forms/frmMain.h"
#include "ui/models/DeckChoice.h"
#include "ui/strings/Decode.h"
#include "ui/strings/FileWords.h"

namespace ui {
namespace {

/// Files of rows that are to be deleted: while somebody thinks it over, the rows may get other numbers.
std::vector<std::string> FilesOf(const catalogue::track_table& table, const std::vector<int>& rows,
                                 int column) {
  std::vector<std::string> files;
  for (const int row : rows) files.emplace_back(table.Cell(row, column));
  return files;
}

std::vector<int> RowsWith(const catalogue::track_table& table, const std::vector<std::string>& files) {
  std::vector<int> rows = table.FirstRowsOf(files);
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = files[i].empty() ? 0 : rows[i];
  std::erase(rows, 0);
  return rows;
}

/// A path that may go on in the next line behind each folder.
QString Breakable(const std::string& path) {
  constexpr QChar kZeroWidthSpace(0x200B);
  return Decode(path).replace(QLatin1Char('/'), QString(QLatin1Char('/')) + kZeroWidthSpace);
}

}  // namespace

void frmMain::LoadOnFreeDeck(const TrackRows& rows) {
  view_ = workstation_.View();
  if (const auto deck = DeckForLoading(view_)) return Load(*deck, rows);
  status_->Tell((*say_)(Say::BothDecksPlay));
}

void frmMain::Load(int deck, const TrackRows& rows) {
  view_ = workstation_.View();
  const catalogue::track_table& table = TableOf(workstation_.Collections(), rows.table);
  const int row = rows.rows.empty() ? 0 : rows.rows.front();
  if (row < 1 || row > table.Rows()) return status_->Tell((*say_)(Say::NoRowChosen));
  if (!MayLoad(Deck(deck))) return status_->Tell((*say_)(Say::DeckIsPlaying).arg(deck));
  status_->Untell();
  workstation_.Decks()[deck].Load(table, row);
}

PlaylistPanel& frmMain::PanelOf(TableId playlist) const {
  return *playlists_[static_cast<std::size_t>(playlist) - 1];
}

void frmMain::Activate(TableId table) {
  active_ = table;
  music_->SetActive(table == TableId::Catalogue);
  for (std::size_t i = 0; i < playlists_.size(); ++i) {
    playlists_[i]->SetActive(table == PlaylistId(static_cast<int>(i) + 1));
  }
}

TrackRows frmMain::ChosenRows() const {
  return active_ == TableId::Catalogue ? music_->ChosenRows() : PanelOf(active_).ChosenRows();
}

std::string frmMain::ChosenFile() const {
  const TrackRows chosen = ChosenRows();
  const int row = chosen.rows.empty() ? 0 : chosen.rows.front();
  return std::string(
      TableOf(workstation_.Collections(), chosen.table).Cell(row, catalogue::track::kFilename));
}

void frmMain::ListenToChosen() {
  const TrackRows chosen = ChosenRows();
  if (!listen_->Listening() && chosen.rows.empty()) status_->Tell((*say_)(Say::NoRowChosen));
  listen_->Toggle(TableOf(workstation_.Collections(), chosen.table),
                  chosen.rows.empty() ? 0 : chosen.rows.front());
}

void frmMain::PutIntoPlaylist(const TrackRows& rows, TableId to, int before, Leaving leaving) {
  const int first = PutRows(workstation_.Collections(), rows, to, before, leaving);
  if (first == 0) return;
  if (rows.table != to && rows.table != TableId::Catalogue && leaving == Leaving::Go) {
    PanelOf(rows.table).Reload(rows.rows.front());
  }
  PanelOf(to).Reload(first);
}

void frmMain::AddChosenTo(int playlist) {
  const TrackRows rows = ChosenRows();
  const TableId to = PlaylistId(playlist);
  if (rows.rows.empty()) return status_->Tell((*say_)(Say::NoRowChosen));
  if (rows.table == to) return;
  PutIntoPlaylist(rows, to, workstation_.Collections().Playlist(playlist).Rows() + 1, Leaving::Stay);
  status_->Tell(say_->Count(Say::PutIntoPlaylist, rows.rows.size(), playlist));
}

void frmMain::AnalyseChosen() {
  workstation_.Collections().Analyse(music_->ChosenRows().rows);
}

void frmMain::EditTags() {
  const bool karaoke = pages_->currentWidget() == karaoke_->parentWidget();
  const TrackRows chosen = ChosenRows();
  std::vector<std::string> files = karaoke ? FilesOf(workstation_.Collections().Karaoke().Table(),
                                                     karaoke_->ChosenRows(), catalogue::karaoke::kFilename)
                                           : FilesOf(TableOf(workstation_.Collections(), chosen.table),
                                                     chosen.rows, catalogue::track::kFilename);
  if (files.empty()) return status_->Tell((*say_)(Say::NoRowChosen));
  if (workstation_.Tags().CanEdit()) editors_.OpenTags(std::move(files));
}

void frmMain::DeleteTracks() {
  const catalogue::track_table& table = workstation_.Collections().Music().Table();
  const auto files = FilesOf(table, music_->ChosenRows().rows, catalogue::track::kFilename);
  if (files.empty()) return;
  const QString question = files.size() == 1 ? (*say_)(Say::AskDeleteOne).arg(Breakable(files.front()))
                                             : (*say_)(Say::AskDelete).arg(files.size());
  const Say act = files.size() == 1 ? Say::DeleteFile : Say::DeleteFiles;
  boxes_.Ask(QStringLiteral("DeleteTracksBox"), question, (*say_)(act), [this, files] {
    const auto rows = RowsWith(workstation_.Collections().Music().Table(), files);
    workstation_.Collections().Music().Delete(
        rows, [window = QPointer<frmMain>(this)](int gone, std::vector<std::string> kept) {
          if (!window.isNull()) window->music_->ShowDeleted(gone, kept);
        });
  });
}

void frmMain::DeleteKaraoke() {
  const catalogue::track_table& table = workstation_.Collections().Karaoke().Table();
  const auto files = FilesOf(table, karaoke_->ChosenRows(), catalogue::karaoke::kFilename);
  if (files.empty()) return;
  const QString question = files.size() == 1 ? (*say_)(Say::AskDeleteSong).arg(Breakable(files.front()))
                                             : (*say_)(Say::AskDeleteSongs).arg(files.size());
  boxes_.Ask(QStringLiteral("DeleteKaraokeBox"), question, (*say_)(Say::DeleteFiles), [this, files] {
    const auto rows = RowsWith(workstation_.Collections().Karaoke().Table(), files);
    workstation_.Collections().Karaoke().Delete(
        rows, [window = QPointer<frmMain>(this)](int, std::vector<std::string> kept) {
          if (!window.isNull()) window->karaoke_->ShowDeleted(kept);
        });
  });
}

void frmMain::AddFiles(std::vector<std::string> paths) {
  ShowPage(0);
  Add(std::move(paths), {});
}

void frmMain::AddAndLoad(int deck, std::vector<std::string> paths) {
  Add(std::move(paths), [this, deck](const app::IntakeOutcome& outcome) {
    const auto rows = RowsWith(workstation_.Collections().Music().Table(), {outcome.first});
    if (!rows.empty()) Load(deck, {TableId::Catalogue, rows});
  });
}

void frmMain::Add(std::vector<std::string> paths, std::function<void(const app::IntakeOutcome&)> then) {
  if (paths.empty()) return;
  // The workstation may outlive the window.
  workstation_.Collections().Intake().Add(
      {.list = app::ListId::Catalogue, .paths = std::move(paths)},
      [window = QPointer<frmMain>(this), then = std::move(then)](const app::IntakeOutcome& outcome) {
        if (window.isNull()) return;
        window->music_->ShowAdded(outcome);
        if (then) then(outcome);
      });
}

void frmMain::RemoveTracks() {
  const std::vector<int> rows = music_->ChosenRows().rows;
  const int removed = workstation_.Collections().Removed().Remove(app::ListId::Catalogue, rows);
  music_->Reload();
  TellRemoved(removed);
}

void frmMain::RemoveSongs() {
  const int removed =
      workstation_.Collections().Removed().Remove(app::ListId::Karaoke, karaoke_->ChosenRows());
  karaoke_->Reload();
  TellRemoved(removed);
}

void frmMain::TellRemoved(int rows) {
  if (rows == 0) return;
  status_->Tell(say_->Count(FileWord::Removed, rows));
}

void frmMain::BringRowsBack() {
  const auto& say = *say_;
  const auto back = workstation_.Collections().Removed().Undo();
  if (!back) return status_->Tell(say(FileWord::NothingToBringBack));
  QString list;
  if (back->list == app::ListId::Catalogue) {
    music_->Reload();
    if (back->first_row > 0) music_->ChooseRow(back->first_row);
    list = say(Say::Catalogue);
  } else if (back->list == app::ListId::Karaoke) {
    karaoke_->Reload();
    list = say(Say::Karaoke);
  } else {
    const int number = static_cast<int>(back->list) - static_cast<int>(app::ListId::Karaoke);
    PanelOf(PlaylistId(number)).Reload(back->first_row);
    list = say(Say::Playlist).arg(number);
  }
  QString told = say.Count(FileWord::IsBack, back->rows).arg(list);
  if (back->known > 0) told += QLatin1Char(' ') + say.Count(FileWord::IsBackAlready, back->known);
  status_->Tell(told);
}

}  // namespace ui
