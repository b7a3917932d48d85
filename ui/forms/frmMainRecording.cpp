// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The recording of the evening, and what was recorded on its way to a deck.
#include "app/Decks.h"
#include "app/recording/RecordingStation.h"
#include "app/sound/DeckStation.h"
#include "ui/forms/RecordingPage.h"
#include "ui/forms/StatusLine.h"
#include "ui/forms/frmMain.h"
#include "ui/models/DeckChoice.h"

namespace ui {

QWidget* frmMain::MakeRecording(const Look& look) {
  recording_ = new RecordingPage(workstation_.Recording(), look);
  connect(recording_, &RecordingPage::Pressed, this, &frmMain::ToggleRecording);
  connect(recording_, &RecordingPage::LoadWanted, this, &frmMain::LoadRecorded);
  connect(recording_, &RecordingPage::PlayWanted, this, &frmMain::PlayRecorded);
  return recording_;
}

void frmMain::ToggleRecording() {
  app::RecordingStation& recording = workstation_.Recording();
  if (!recording.View().possible) return;
  if (recording.View().state == app::RecordingView::State::Idle) return recording.Start();
  recording.Stop();
}

bool frmMain::IsRecording() {
  return workstation_.Recording().View().state != app::RecordingView::State::Idle;
}

void frmMain::ShowRecording(support::TimePoint now) {
  status_->ShowRecording(workstation_.Recording().View());
  recording_->Show(view_, now);
}

bool frmMain::LoadRecorded(int deck, const RecordedPlace& place) {
  view_ = workstation_.View();
  if (!MayLoad(Deck(deck))) {
    status_->Tell((*say_)(Say::DeckIsPlaying).arg(deck));
    return false;
  }
  status_->Untell();
  app::Track track;
  track.filename = place.file;
  track.artist = place.artist;
  track.title = place.title;
  track.stands_at = place.place;
  workstation_.Decks()[deck].Load(track);
  return true;
}

void frmMain::PlayRecorded(const RecordedPlace& place) {
  view_ = workstation_.View();
  const auto deck = DeckForLoading(view_);
  if (!deck) return status_->Tell((*say_)(Say::BothDecksPlay));
  if (LoadRecorded(*deck, place)) workstation_.Decks()[*deck].Do(&app::DeckStation::Play);
}

}  // namespace ui
