// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QHBoxLayout>
#include <QMenu>
#include <QPointer>
#include <algorithm>

#include "app/Collections.h"
#include "app/singers/SingerStation.h"
#include "app/songs/SongStation.h"
#include "support/Text.h"
#include "ui/forms/KaraokePage.h"
#include "ui/forms/Menus.h"
#include "ui/forms/SingersPanel.h"
#include "ui/forms/SongPanel.h"
#include "ui/forms/frmKaraoke.h"
#include "ui/forms/frmMain.h"
#include "ui/models/NextUpText.h"
#include "ui/models/TrackModel.h"
#include "ui/strings/SingerWords.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

// Shares of the room beside the words: the songs have all of it until somebody sings.
constexpr int kSongsShare = 5;
constexpr int kSingersShare = 6;

/// "03:45" in a table.
std::chrono::seconds TimeOfCell(std::string_view cell) {
  const std::size_t sign = cell.find(':');
  const auto minutes = support::ParseInteger(cell.substr(0, sign));
  const auto seconds = support::ParseInteger(sign == std::string_view::npos ? "" : cell.substr(sign + 1));
  if (!minutes || !seconds || *minutes < 0 || *minutes > 1000) return {};
  return std::chrono::minutes(*minutes) + std::chrono::seconds(std::clamp<std::int64_t>(*seconds, 0, 59));
}

/// Of a row of the songs; without a file where there is no such row.
singers::Wish WishOf(const catalogue::track_table& table, int row) {
  namespace column = catalogue::karaoke;
  singers::Wish wish;
  wish.filename = table.Cell(row, column::kFilename);
  wish.artist = table.Cell(row, column::kArtist);
  wish.title = table.Cell(row, column::kTitle);
  wish.length = TimeOfCell(table.Cell(row, column::kTime));
  return wish;
}

}  // namespace

QWidget* frmMain::MakeKaraoke(const Look& look) {
  if (singers_ == nullptr) singers_ = std::make_unique<frmKaraoke>(workstation_.Settings(), *this);
  singers_->setWindowTitle(windowTitle());
  karaoke_ = new KaraokePage(workstation_.Collections().Karaoke().Table(), workstation_.Lists(), look);
  karaoke_->Rows().MarkMissing(
      [this](std::string_view file) { return workstation_.Collections().Missing().Has(file); });
  song_ = new SongPanel(workstation_.Songs(), workstation_.Settings(), *singers_, look);
  connect(karaoke_, &KaraokePage::DeleteWanted, this, &frmMain::DeleteKaraoke);
  connect(karaoke_, &KaraokePage::RemoveWanted, this, &frmMain::RemoveSongs);
  connect(karaoke_, &KaraokePage::BringBackWanted, this, &frmMain::BringRowsBack);
  connect(karaoke_, &KaraokePage::StopWanted, this,
          [this] { workstation_.Collections().Intake().Stop(app::ListId::Karaoke); });
  connect(karaoke_, &KaraokePage::SongWanted, this, &frmMain::PlaySong);
  connect(karaoke_, &KaraokePage::FilesWanted, this, &frmMain::AddSongs);
  connect(song_, &SongPanel::Failed, karaoke_, &KaraokePage::ShowFailure);
  turns_ = new SingersPanel(workstation_.Singers(), workstation_.Lists(), workstation_.Settings(), look);
  auto* lists = Column(0.4, {{karaoke_, kSongsShare}, turns_});
  connect(turns_, &SingersPanel::Filled, this,
          [this, lists](bool any) { lists->setStretchFactor(turns_, any ? kSingersShare : 0); });
  auto* box = new QWidget;
  FillRow(*box, 0, 0.4, {{lists, 4}, {song_, 6}});
  return box;
}

void frmMain::FillSongMenu(QMenu& menu) {
  const std::vector<int> rows = karaoke_->ChosenRows();
  if (const singers::SingerId singer = turns_->ChosenSinger(); singer != 0) {
    AddAct(menu, QStringLiteral("AskForSinger"),
           (*say_)(SingerWord::AskForSinger).arg(turns_->NameOf(singer)), Qt::Key_Return,
           [this, rows] { PlaySong(rows.front()); })
        ->setEnabled(!rows.empty());
  }
  AddAct(menu, QStringLiteral("PlaySong"), (*say_)(Say::PlaySong), {}, [this, rows] {
    workstation_.Singers().Do(&app::SingerStation::PlayNow,
                              WishOf(workstation_.Collections().Karaoke().Table(), rows.front()));
  })->setEnabled(!rows.empty());
}

void frmMain::PlaySong(int row) {
  const singers::Wish wish = WishOf(workstation_.Collections().Karaoke().Table(), row);
  if (wish.filename.empty()) return;
  if (const singers::SingerId singer = turns_->ChosenSinger(); singer != 0)
    return workstation_.Singers().Do(&app::SingerStation::Ask, singer, wish);
  // Nobody is thrown off the stage by a double click; the menu plays at once.
  if (workstation_.Singers().View().sheet->on_stage_sings && !turns_->IsEmpty())
    return status_->Tell((*say_)(SingerWord::SomebodySings));
  workstation_.Singers().Do(&app::SingerStation::PlayNow, wish);
}

void frmMain::AddSongs(std::vector<std::string> paths) {
  if (paths.empty()) return;
  // The workstation may outlive the window.
  workstation_.Collections().Intake().Add(
      {.list = app::ListId::Karaoke, .paths = std::move(paths)},
      [window = QPointer<frmMain>(this)](const app::IntakeOutcome& outcome) {
        if (window.isNull()) return;
        const catalogue::track_table& songs = window->workstation_.Collections().Karaoke().Table();
        window->karaoke_->ShowAdded(outcome, songs.FindRow(catalogue::karaoke::kFilename, outcome.last));
      });
}

void frmMain::ShowSong(support::TimePoint now) {
  karaoke_->Show(workstation_.Collections().Intake().Progress(app::ListId::Karaoke));
  karaoke_->Rows().ShowMissing(workstation_.Collections().Missing().Answers());
  const app::SongView& song = workstation_.Songs().View();
  song_->Show(song, now);
  const app::SingersSheet& sheet = *workstation_.Singers().View().sheet;
  turns_->Show(workstation_.Singers().View());
  const bool wanted = workstation_.Settings().Flag("Karaoke", "NextUp");
  const NextUpCard::Form form = wanted ? NextUpForm(sheet, song) : NextUpCard::Form::Hidden;
  singers_->NextUp().Show(form, NextUpSaid(sheet, form, *say_));
  singers_->Show(song, now);
}

}  // namespace ui
