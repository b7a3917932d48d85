// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QKeyEvent>
#include <QShortcut>

#include "app/ApplyButton.h"
#include "ui/forms/ConsolePage.h"
#include "ui/forms/CueTools.h"
#include "ui/forms/DeckArea.h"
#include "ui/forms/DeckPanel.h"
#include "ui/forms/ListenBar.h"
#include "ui/forms/MicrophoneStrip.h"
#include "ui/forms/MixerPanel.h"
#include "ui/forms/SingersPanel.h"
#include "ui/forms/TempoTools.h"
#include "ui/forms/ToneStrip.h"
#include "ui/forms/frmMain.h"
#include "ui/models/KeyMap.h"

namespace ui {
namespace {

constexpr int kCrossfaderStep = 5;
constexpr auto kListenStep = std::chrono::seconds(10);
constexpr int kPages = 8;
constexpr int kKaraokePage = 2;
constexpr int kConsolePage = 3;

}  // namespace

void frmMain::Key(const QKeySequence& key, Reach reach, std::function<void()> action) {
  auto* shortcut = new QShortcut(key, this);
  shortcut->setContext(reach == Reach::Everywhere ? Qt::ApplicationShortcut : Qt::WindowShortcut);
  // A key that is held down too long must not start and stop a deck again and again.
  shortcut->setAutoRepeat(reach == Reach::Window);
  connect(shortcut, &QShortcut::activated, this, std::move(action));
}

void frmMain::MakeKeys() {
  for (const int deck : {1, 2}) {
    const auto panel = [this, deck]() -> DeckPanel& { return deck_area_->Panel(deck); };
    Key(KeyOf(Command::PlayPause, deck), Reach::Everywhere, [panel] { panel().PlayOrPause(); });
    Key(KeyOf(Command::ToStart, deck), Reach::Everywhere, [panel] { panel().ToStart(); });
    Key(KeyOf(Command::Stop, deck), Reach::Everywhere, [panel] { panel().Stop(); });
    Key(KeyOf(Command::Load, deck), Reach::Everywhere, [this, deck] { Load(deck, ChosenRows()); });
    Key(KeyOf(Command::SetStart, deck), Reach::Everywhere,
        [panel] { panel().SetMixPoint(app::MixPoint::Start); });
    Key(KeyOf(Command::SetEnd, deck), Reach::Everywhere,
        [panel] { panel().SetMixPoint(app::MixPoint::End); });
    Key(KeyOf(Command::Listen, deck), Reach::Everywhere, [this, deck] { deck_area_->Mixer().Listen(deck); });
    Key(KeyOf(Command::Sync, deck), Reach::Everywhere, [panel] { panel().Tools().ToggleSync(); });
    Key(KeyOf(Command::Tap, deck), Reach::Everywhere, [panel] { panel().Tools().Tap(); });
    Key(KeyOf(Command::KeyLock, deck), Reach::Everywhere, [panel] { panel().Tools().ToggleKeyLock(); });
    Key(KeyOf(Command::KillHigh, deck), Reach::Everywhere,
        [panel] { panel().Tone().ToggleKill(app::ToneBand::High); });
    Key(KeyOf(Command::KillMid, deck), Reach::Everywhere,
        [panel] { panel().Tone().ToggleKill(app::ToneBand::Mid); });
    Key(KeyOf(Command::KillBass, deck), Reach::Everywhere,
        [panel] { panel().Tone().ToggleKill(app::ToneBand::Bass); });
  }
  for (int playlist = 1; playlist <= app::kPlaylists; ++playlist) {
    Key(KeyOfPlaylist(playlist), Reach::Everywhere, [this, playlist] { AddChosenTo(playlist); });
  }
  for (int page = 0; page < kPages; ++page) {
    Key(KeyOfPage(page), Reach::Everywhere, [this, page] { ShowPage(page); });
  }
  Key(KeyOfNewSinger(), Reach::Everywhere, [this] {
    ComeToFront();
    ShowPage(kKaraokePage);
    turns_->TakeName();
  });
  // The other Enter key has a code of its own.
  for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter})
    Key(Qt::CTRL | enter, Reach::Everywhere, [this] { turns_->Next(); });
  Key(KeyOfRecording(), Reach::Everywhere, [this] { ToggleRecording(); });
  Key(KeyOfMicrophone(), Reach::Everywhere, [this] { microphone_->Toggle(); });
  Key(KeyOfCompactDecks(), Reach::Everywhere, [this] { ToggleDeckForm(); });
  Key(KeyOfBlackout(), Reach::Everywhere, [this] { console_->ToggleBlackout(); });
  Key(KeyOfLiveLights(), Reach::Everywhere, [this] { ToggleLiveLights(); });
  Key(KeyOfFinding(), Reach::Window, [this] { Find(); });
  Key(KeyOfUndo(), Reach::Window, [this] { BringRowsBack(); });
  Key(KeyOfListening(), Reach::Everywhere, [this] { ListenToChosen(); });
  Key(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Left), Reach::Window,
      [this] { listen_->SeekBy(-kListenStep); });
  Key(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Right), Reach::Window,
      [this] { listen_->SeekBy(kListenStep); });
  Key(KeyOfTags(), Reach::Window, [this] { EditTags(); });
  Key(KeyOfFixtureEditor(), Reach::Everywhere, [this] { editors_.OpenLibrary(); });
  Key(KeyOfShowEditor(), Reach::Everywhere, [this] { editors_.OpenShowEditor(); });
  Key(KeyOfHelp(), Reach::Everywhere, [this] {
    workstation_.ApplyButton().Press({app::ApplyMode::Help, {}, {}});
  });
  Key(QKeySequence(Qt::CTRL | Qt::Key_Left), Reach::Window,
      [this] { deck_area_->Mixer().MoveCrossfader(-kCrossfaderStep); });
  Key(QKeySequence(Qt::CTRL | Qt::Key_Right), Reach::Window,
      [this] { deck_area_->Mixer().MoveCrossfader(kCrossfaderStep); });
}

void frmMain::ToggleLiveLights() {
  ShowPage(kConsolePage);
  console_->ToggleView();
}

// Shortcuts know no release, so what lasts as long as a key is held is listened for here.
bool frmMain::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ApplicationDeactivate) ReleaseKeys();
  // It is the system, or a signal, that ends the program: nobody may be there to answer.
  if (watched == qApp && event->type() == QEvent::Quit) leaving_ = true;
  const bool pressed = event->type() == QEvent::KeyPress;
  if (!pressed && event->type() != QEvent::KeyRelease) return QMainWindow::eventFilter(watched, event);
  if (HoldKey(static_cast<const QKeyEvent&>(*event), pressed)) return true;
  return QMainWindow::eventFilter(watched, event);
}

bool frmMain::HoldKey(const QKeyEvent& key, bool pressed) {
  // Whoever lets go of Shift or Ctrl first lets go all the same.
  const QKeyCombination talk = KeyOfTalking()[0];
  const bool begins = pressed && key.modifiers() == talk.keyboardModifiers();
  if (key.key() == talk.key() && (talking_ || begins)) {
    if (!key.isAutoRepeat() && pressed != talking_) Talk(pressed);
    return true;
  }
  for (const int deck : {1, 2}) {
    if (deck_area_->Panel(deck).Cues().TakeKey(key.key(), key.modifiers(), pressed, key.isAutoRepeat()))
      return true;
    for (const Command command : {Command::NudgeBack, Command::NudgeOn}) {
      const QKeyCombination wanted = KeyOf(command, deck)[0];
      if (key.key() != wanted.key()) continue;
      if (pressed && key.modifiers() != wanted.keyboardModifiers()) continue;
      if (key.isAutoRepeat()) return true;
      const int direction = command == Command::NudgeBack ? -1 : 1;
      if (pressed || nudging_[deck == 1 ? 0 : 1]) Nudge(deck, pressed ? direction : 0);
      if (pressed) return true;
    }
  }
  return false;
}

void frmMain::Talk(bool held) {
  talking_ = held;
  microphone_->Talk(held);
}

void frmMain::Nudge(int deck, int direction) {
  nudging_[deck == 1 ? 0 : 1] = direction != 0;
  deck_area_->Panel(deck).Tools().Nudge(direction);
}

void frmMain::ReleaseKeys() {
  for (const int deck : {1, 2}) {
    if (nudging_[deck == 1 ? 0 : 1]) Nudge(deck, 0);
    deck_area_->Panel(deck).Cues().LetGo();
  }
  if (talking_) Talk(false);
}

}  // namespace ui
