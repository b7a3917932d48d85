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
