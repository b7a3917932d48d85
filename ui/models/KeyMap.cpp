// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/KeyMap.h"

namespace ui {

QKeySequence KeyOf(Command command, int deck) {
  constexpr int kModifiers[] = {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier,
                                int(Qt::ControlModifier) | int(Qt::ShiftModifier)};
  const int number = static_cast<int>(command);
  return QKeySequence(kModifiers[number / 4] | (Qt::Key_F1 + number % 4 + (deck == 1 ? 0 : 4)));
}

QKeySequence KeyOf(CueAct act, int deck) {
  constexpr int kAlt = static_cast<int>(Qt::ALT);
  constexpr int kBoth = static_cast<int>(Qt::ALT) | static_cast<int>(Qt::SHIFT);
  constexpr int kKeys[2][kCueActs] = {
      {kAlt | Qt::Key_C, kAlt | Qt::Key_X, kAlt | Qt::Key_G, kAlt | Qt::Key_B, kAlt | Qt::Key_V,
       kAlt | Qt::Key_3, kAlt | Qt::Key_4, kAlt | Qt::Key_1, kAlt | Qt::Key_2, kAlt | Qt::Key_5,
       kBoth | Qt::Key_C, kBoth | Qt::Key_V},
      {kAlt | Qt::Key_N, kAlt | Qt::Key_M, kAlt | Qt::Key_Comma, kAlt | Qt::Key_Period, kAlt | Qt::Key_Minus,
       kAlt | Qt::Key_9, kAlt | Qt::Key_0, kAlt | Qt::Key_7, kAlt | Qt::Key_8, kAlt | Qt::Key_6,
       kBoth | Qt::Key_N, kBoth | Qt::Key_M}};
  return QKeySequence(kKeys[deck == 1 ? 0 : 1][static_cast<int>(act)]);
}

QKeySequence KeyOfPad(int slot, int deck) {
  constexpr Qt::Key kKeys[2][8] = {
      {Qt::Key_Q, Qt::Key_W, Qt::Key_E, Qt::Key_R, Qt::Key_A, Qt::Key_S, Qt::Key_D, Qt::Key_F},
      {Qt::Key_U, Qt::Key_I, Qt::Key_O, Qt::Key_P, Qt::Key_H, Qt::Key_J, Qt::Key_K, Qt::Key_L}};
  return QKeySequence(Qt::ALT | kKeys[deck == 1 ? 0 : 1][slot]);
}

QKeySequence KeyOfPlaylist(int playlist) {
  return QKeySequence(Qt::Key_F9 + playlist - 1);
}

QKeySequence KeyOfListening() {
  return QKeySequence(Qt::CTRL | Qt::Key_Space);
}

QKeySequence KeyOfFixtureEditor() {
  return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_L);
}

QKeySequence KeyOfShowEditor() {
  return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D);
}

QKeySequence KeyOfTags() {
  return QKeySequence(Qt::CTRL | Qt::Key_E);
}

QKeySequence KeyOfNewSinger() {
  return QKeySequence(Qt::CTRL | Qt::Key_G);
}

QKeySequence KeyOfRecording() {
  return QKeySequence(Qt::CTRL | Qt::Key_R);
}

QKeySequence KeyOfMicrophone() {
  return QKeySequence(Qt::CTRL | Qt::Key_M);
}

QKeySequence KeyOfTalking() {
  return QKeySequence(Qt::CTRL | Qt::Key_T);
}

QKeySequence KeyOfLiveLights() {
  return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_V);
}

QKeySequence KeyOfBlackout() {
  return QKeySequence(Qt::CTRL | Qt::Key_B);
}

QKeySequence KeyOfFinding() {
  return QKeySequence(Qt::CTRL | Qt::Key_F);
}

QKeySequence KeyOfUndo() {
  return QKeySequence(Qt::CTRL | Qt::Key_Z);
}

QKeySequence KeyOfHelp() {
  return QKeySequence(Qt::Key_F12);
}

QKeySequence KeyOfCompactDecks() {
  return QKeySequence(Qt::CTRL | Qt::Key_F11);
}

QKeySequence KeyOfPage(int page) {
  return QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + page));
}

QString KeyText(const QKeySequence& key) {
  return key.toString(QKeySequence::NativeText);
}

}  // namespace ui
