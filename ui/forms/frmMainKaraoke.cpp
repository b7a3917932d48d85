// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QHBoxLayout>
#include <QPointer>

#include "app/Collections.h"
#include "app/songs/SongStation.h"
#include "ui/forms/KaraokePage.h"
#include "ui/forms/SongPanel.h"
#include "ui/forms/frmKaraoke.h"
#include "ui/forms/frmMain.h"
#include "ui/models/TrackModel.h"
#include "ui/widgets/Kit.h"

namespace ui {

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
  auto* box = new QWidget;
  FillRow(*box, 0, 0.4, {{karaoke_, 4}, {song_, 6}});
  return box;
}

void frmMain::PlaySong(int row) {
  namespace column = catalogue::karaoke;
  const catalogue::track_table& table = workstation_.Collections().Karaoke().Table();
  const auto cell = [&](int which) { return std::string(table.Cell(row, which)); };
  const std::string filename = cell(column::kFilename);
  if (filename.empty()) return;
  workstation_.Songs().Play({filename, cell(column::kArtist), cell(column::kTitle)});
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
  singers_->Show(song, now);
}

}  // namespace ui
