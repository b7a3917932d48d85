// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/RecordingList.h"

#include <QDesktopServices>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "app/recording/RecordingStation.h"
#include "ui/models/RecordingText.h"
#include "ui/strings/Decode.h"
#include "ui/strings/RecordingWords.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

bool IsRunning(const app::RecordingView& view) {
  return view.state == app::RecordingView::State::Recording;
}

std::string FolderOf(const std::string& path) {
  const std::size_t end = path.find_last_of("/\\");
  return end == std::string::npos ? path : path.substr(0, end);
}

}  // namespace

RecordingList::RecordingList(app::RecordingStation& station, const Look& look, QWidget* parent)
    : QWidget(parent), station_(station), look_(look) {
  const auto& say = look.say;
  table_ = MakeTable("RecordingList", say.Of(RecordingWord::Recordings),
                     {say(RecordingWord::Begins), say(RecordingWord::RecordingsHead)}, 1);
  connect(table_, &QTableWidget::itemSelectionChanged, this, [this] {
    for (QPushButton* button : needs_choice_) button->setEnabled(Chosen() != nullptr);
  });
  empty_ = Caption(say(RecordingWord::NothingRecorded), look.skin.dim);
  Name(*empty_, "RecordingListEmpty");
  auto* play = PlainButton("RecordingPlay", say.Of(RecordingWord::PlayFromThere), [this] {
    if (const RecordedPlace* place = Chosen()) Q_EMIT PlayWanted(*place);
  });
  auto* show =
      PlainButton("RecordingShowFolder", say.Of(RecordingWord::ShowInFolder), [this] { ShowFolder(); });
  needs_choice_ = {MakeLoad(1), MakeLoad(2), play};
  for (QPushButton* button : needs_choice_) button->setEnabled(false);
  FillColumn(*this, 0, 0.4,
             {{table_, 1}, empty_, Row(0.4, {needs_choice_[0], needs_choice_[1], play, Part::Room(), show})});
}

QPushButton* RecordingList::MakeLoad(int deck) {
  const auto& say = look_.say;
  return PlainButton(QStringLiteral("RecordingToDeck%1").arg(deck),
                     {say(RecordingWord::ToDeck).arg(deck), say(RecordingWord::RecordingToDeck).arg(deck),
                      say.Tip(RecordingWord::ToDeck).arg(deck)},
                     [this, deck] {
                       if (const RecordedPlace* place = Chosen()) Q_EMIT LoadWanted(deck, *place);
                     });
}

void RecordingList::Show(const app::RecordingView& view) {
  const bool running = IsRunning(view);
  if (looks_ == station_.Looks() && running == running_ && path_ == view.path && tracks_ == view.tracks &&
      !rows_.empty()) {
    return;
  }
  if (rows_.empty() && looks_ == station_.Looks() && running == running_) return;
  looks_ = station_.Looks();
  running_ = running;
  path_ = view.path;
  tracks_ = view.tracks;
  Fill(view);
}

void RecordingList::Fill(const app::RecordingView& view) {
  const RecordedPlace* chosen = Chosen();
  const RecordedPlace kept = chosen == nullptr ? RecordedPlace{} : *chosen;
  table_->setRowCount(0);
  rows_.clear();
  if (running_) {
    const app::KeptRecording now{view.title, view.path,
                                 view.tracks ? *view.tracks : std::vector<app::RecordedTrack>()};
    AddRecording(now, look_.say(RecordingWord::BeingRecorded).arg(Decode(view.title)));
  }
  for (const app::KeptRecording& recording : station_.OnTheShelf().recordings) {
    if (!running_ || recording.path != view.path) AddRecording(recording, Decode(recording.title));
  }
  empty_->setVisible(rows_.empty());
  const auto same = std::find_if(rows_.begin(), rows_.end(), [&](const RecordedPlace& row) {
    return row.file == kept.file && row.place == kept.place && row.title == kept.title;
  });
  if (chosen != nullptr && same != rows_.end()) table_->selectRow(static_cast<int>(same - rows_.begin()));
}

void RecordingList::AddRecording(const app::KeptRecording& recording, const QString& name) {
  RecordedPlace whole{recording.path, {}, recording.title, {}};
  // A folder of tracks begins with its first.
  if (!recording.tracks.empty()) whole.file = recording.tracks.front().file;
  AddRow({}, name, std::move(whole), true);
  for (const app::RecordedTrack& track : recording.tracks) {
    const bool own_file = recording.path != track.file;
    AddRow(own_file && track.place.count() == 0 ? QString() : HoursText(track.place),
           Decode(app::NameOf(track)),
           {track.file, track.artist, track.title, track.place - track.file_begins}, false);
  }
}

void RecordingList::AddRow(const QString& begins, const QString& name, RecordedPlace place, bool heads) {
  const int row = table_->rowCount();
  table_->insertRow(row);
  auto* time = new QTableWidgetItem(begins);
  auto* title = new QTableWidgetItem(heads ? name : QStringLiteral("    ") + name);
  if (heads) {
    QFont bold = table_->font();
    bold.setBold(true);
    title->setFont(bold);
  }
  title->setToolTip(Decode(place.file));
  table_->setItem(row, 0, time);
  table_->setItem(row, 1, title);
  rows_.push_back(std::move(place));
}

const RecordedPlace* RecordingList::Chosen() const {
  const auto rows = table_->selectionModel()->selectedRows();
  if (rows.isEmpty() || rows.front().row() >= static_cast<int>(rows_.size())) return nullptr;
  return &rows_[static_cast<std::size_t>(rows.front().row())];
}

void RecordingList::ShowFolder() {
  const RecordedPlace* chosen = Chosen();
  const std::string folder = chosen == nullptr ? station_.OnTheShelf().folder : FolderOf(chosen->file);
  QDesktopServices::openUrl(QUrl::fromLocalFile(QFile::decodeName(QByteArray::fromStdString(folder))));
}

}  // namespace ui
