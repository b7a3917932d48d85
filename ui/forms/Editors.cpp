// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/Editors.h"

#include "ui/forms/DMX.h"
#include "ui/forms/Library.h"

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

void Editors::ClearSheet() {
  if (library_) library_->ClearSheet();
  if (show_) show_->ClearSheet();
}

void Editors::ApplySheet(const Look& look, double points) {
  look_ = std::make_unique<Look>(look);
  points_ = points;
  if (library_) library_->ApplySheet(look, points);
  if (show_) show_->ApplySheet(look, points);
}

void Editors::ShowFrame() {
  for (EditorWindow* editor :
       {static_cast<EditorWindow*>(library_.get()), static_cast<EditorWindow*>(show_.get())}) {
    if (editor == nullptr) continue;
    editor->ShowFrame();
    editor->KeepDraft();
  }
}

bool Editors::Changed() const {
  return (library_ && library_->Changed()) || (show_ && show_->Changed());
}

void Editors::LeaveThen(std::function<void()> then) {
  const auto leave_show = [this, then = std::move(then)] {
    if (show_ && show_->Changed()) return show_->Leave(then);
    then();
  };
  if (library_ && library_->Changed()) return library_->Leave(leave_show);
  leave_show();
}

void Editors::Close() {
  library_.reset();
  show_.reset();
}

Library* Editors::FixtureEditor() const {
  return library_.get();
}

DMX* Editors::ShowEditor() const {
  return show_.get();
}

}  // namespace ui
