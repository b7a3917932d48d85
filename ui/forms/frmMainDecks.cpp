// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Decks and mixer over the pages, and how they are mixed.
#include <QPushButton>
#include <cassert>
#include <iterator>

#include "app/Workstation.h"
#include "support/Settings.h"
#include "ui/forms/DeckArea.h"
#include "ui/forms/EffectsPage.h"
#include "ui/forms/EqualiserPage.h"
#include "ui/forms/MixerPanel.h"
#include "ui/forms/MixingPanel.h"
#include "ui/forms/StatusLine.h"
#include "ui/forms/frmMain.h"
#include "ui/models/KeyMap.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr const char* kDeckForms = "CompactDecks";
/// The keys of the pages there, from the left.
constexpr const char* kPageKeys[] = {"Music", "Playlist3", "Karaoke",   "Console",
                                     "Organ", "Effects",   "Recording", "Settings"};

}  // namespace

QWidget* frmMain::MakeDecks(const Look& look) {
  deck_area_ = new DeckArea(workstation_, mixer_state_, look);
  connect(deck_area_, &DeckArea::RowsDropped, this, &frmMain::Load);
  connect(deck_area_, &DeckArea::FilesDropped, this, &frmMain::AddAndLoad);
  connect(deck_area_, &DeckArea::Told, this, [this](const QString& sentence) { status_->Tell(sentence); });
  connect(deck_area_, &DeckArea::ListenLevelMoved, this, &frmMain::KeepListenLevel);
  return deck_area_;
}

QWidget* frmMain::MakeDeckButton(const Look& look) {
  deck_button_ = ToolButton("CompactDecks", look.say.Of(Say::CompactDecks), [this] { ToggleDeckForm(); });
  return deck_button_;
}

void frmMain::TakeDeckForm() {
  assert(static_cast<std::size_t>(page_) < std::size(kPageKeys));
  const bool compact = settings_.Flag(kDeckForms, kPageKeys[page_]);
  deck_area_->Take(compact ? DeckArea::Form::Compact : DeckArea::Form::Whole);
  deck_button_->setText((*say_)(Say::CompactDecks) + (compact ? QStringLiteral(" ▾") : QStringLiteral(" ▴")));
}

void frmMain::ToggleDeckForm() {
  // What has the keyboard there goes; left to itself the keyboard would go to the next list, and its rows
  // would be the ones that the keys load.
  if (deck_area_->isAncestorOf(focusWidget())) FocusPage();
  settings_.SetFlag(kDeckForms, kPageKeys[page_], deck_area_->Taken() == DeckArea::Form::Whole);
  TakeDeckForm();
}

QWidget* frmMain::MakeEffects(const Look& look) {
  mixing_ = new MixingPanel(workstation_.Decks(), workstation_.Lists(), workstation_.Settings(),
                            mixer_state_.curve, look);
  connect(mixing_, &MixingPanel::CurveChosen, this, [this](decks::CrossfaderCurve curve) {
    deck_area_->Mixer().SetCurve(curve);
    settings_.SetNumber("Mixer", "CrossfaderCurve", static_cast<int>(curve));
  });
  equaliser_ = new EqualiserPage(workstation_.Equaliser(), boxes_, mixing_, look);
  effects_ = new EffectsPage(workstation_.Effects(), equaliser_, look);
  return effects_;
}

void frmMain::KeepListenLevel(int level) {
  settings_.SetNumber("Mixer", "Preview", level);
}

}  // namespace ui
