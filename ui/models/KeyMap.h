// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequence>
#include <QString>

namespace ui {

/// What a key of the window does. A block of four function keys belongs to each deck, as they lie together on
/// a keyboard: by themselves, with Ctrl, with Shift and with both.
enum class Command {
  PlayPause,
  ToStart,
  Stop,
  Load,
  SetStart,
  SetEnd,
  Listen,
  Sync,
  Tap,
  KeyLock,
  NudgeBack,
  NudgeOn,
  KillHigh,
  KillMid,
  KillBass,
};

/// Deck 1: F1 to F4. Deck 2: F5 to F8.
[[nodiscard]] QKeySequence KeyOf(Command command, int deck);
/// What a key does with a deck's cues and loops: deck 1 lies under the left hand, deck 2 under the right one.
enum class CueAct {
  Cue,
  Loop,
  In,
  Out,
  Reloop,
  Halve,
  Double,
  JumpBack,
  JumpOn,
  Slip,
  MoveBack,
  MoveOn,
};
inline constexpr int kCueActs = 12;
[[nodiscard]] QKeySequence KeyOf(CueAct act, int deck);
/// slot: from 0. Deck 1: Alt+Q W E R, A S D F; deck 2: Alt+U I O P, H J K L. With Shift it is deleted.
[[nodiscard]] QKeySequence KeyOfPad(int slot, int deck);

/// The chosen rows go to playlist 1 to 3: F9 to F11.
[[nodiscard]] QKeySequence KeyOfPlaylist(int playlist);
/// Listening to the chosen row in the headphones.
[[nodiscard]] QKeySequence KeyOfListening();
[[nodiscard]] QKeySequence KeyOfFixtureEditor();
[[nodiscard]] QKeySequence KeyOfShowEditor();
[[nodiscard]] QKeySequence KeyOfTags();
/// The recording begins or ends.
[[nodiscard]] QKeySequence KeyOfNewSinger();
[[nodiscard]] QKeySequence KeyOfRecording();
/// The microphone on or off.
[[nodiscard]] QKeySequence KeyOfMicrophone();
/// Speaking over the music, for as long as it is held.
[[nodiscard]] QKeySequence KeyOfTalking();
/// The light page, and there between faders and live console.
[[nodiscard]] QKeySequence KeyOfLiveLights();
/// All lamps dark, from every page.
[[nodiscard]] QKeySequence KeyOfBlackout();
/// Looking for rows.
[[nodiscard]] QKeySequence KeyOfFinding();
/// Rows that were taken out of a list come back.
[[nodiscard]] QKeySequence KeyOfUndo();
[[nodiscard]] QKeySequence KeyOfHelp();
/// The decks in one line each, or whole, on the page that is shown.
[[nodiscard]] QKeySequence KeyOfCompactDecks();
/// The pages of the window from the left, counted from 0: Ctrl+1, Ctrl+2 ...
[[nodiscard]] QKeySequence KeyOfPage(int page);
[[nodiscard]] QString KeyText(const QKeySequence& key);

}  // namespace ui
