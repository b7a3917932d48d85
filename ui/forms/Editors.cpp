// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/Editors.h"

#include "app/WorkstationView.h"
#include "app/songs/SongStation.h"
#include "app/tags/TagStation.h"
#include "ui/forms/DMX.h"
#include "ui/forms/Library.h"
#include "ui/forms/frmTags.h"

namespace ui {

Editors::Editors(app::Workstation& workstation, const support::Clock& clock)
    : workstation_(workstation), clock_(clock) {}

Editors::~Editors() = default;

template <typename Window>
void Editors::Open(std::unique_ptr<Window>& window) {
  if (!window) {
    window = std::make_unique<Window>(workstation_, clock_);
    window->ApplySheet(*look_, points_);
    // Later: the window is still busy with its own closing.
    QObject::connect(
        window.get(), &EditorWindow::Left, window.get(),
        [&window] {
          if (!window->isVisible()) window.release()->deleteLater();
        },
        Qt::QueuedConnection);
  }
  window->BringToFront();
}

void Editors::OpenLibrary() {
  Open(library_);
}

void Editors::OpenShowEditor() {
  Open(show_);
}

void Editors::OpenTags(std::vector<std::string> files) {
  if (!tags_) {
    tags_ = std::make_unique<frmTags>(workstation_.Tags());
    tags_->ApplySheet(*look_, points_);
    QObject::connect(
        tags_.get(), &frmTags::Left, tags_.get(),
        [this] {
          if (!tags_->isVisible()) tags_.release()->deleteLater();
        },
        Qt::QueuedConnection);
  }
  tags_->Edit(std::move(files));
}

void Editors::ClearSheet() {
  if (tags_) tags_->ClearSheet();
  if (library_) library_->ClearSheet();
  if (show_) show_->ClearSheet();
}

void Editors::ApplySheet(const Look& look, double points) {
  look_ = std::make_unique<Look>(look);
  points_ = points;
  if (tags_) tags_->ApplySheet(look, points);
  if (library_) library_->ApplySheet(look, points);
  if (show_) show_->ApplySheet(look, points);
}

void Editors::ShowFrame() {
  workstation_.Tags().Follow(workstation_.View(), workstation_.Songs().View().filename);
  if (tags_) tags_->ShowFrame();
  for (EditorWindow* editor :
       {static_cast<EditorWindow*>(library_.get()), static_cast<EditorWindow*>(show_.get())}) {
    if (editor == nullptr) continue;
    editor->ShowFrame();
    editor->KeepDraft();
  }
}

bool Editors::Changed() const {
  return (library_ && library_->Changed()) || (show_ && show_->Changed()) || (tags_ && tags_->Changed());
}

void Editors::LeaveThen(std::function<void()> then) {
  const auto leave_tags = [this, then = std::move(then)] {
    if (tags_ && tags_->Changed()) return tags_->Leave(then);
    then();
  };
  const auto leave_show = [this, leave_tags] {
    if (show_ && show_->Changed()) return show_->Leave(leave_tags);
    leave_tags();
  };
  if (library_ && library_->Changed()) return library_->Leave(leave_show);
  leave_show();
}

void Editors::Close() {
  library_.reset();
  show_.reset();
  tags_.reset();
}

Library* Editors::FixtureEditor() const {
  return library_.get();
}

frmTags* Editors::TagEditor() const {
  return tags_.get();
}

DMX* Editors::ShowEditor() const {
  return show_.get();
}

}  // namespace ui
