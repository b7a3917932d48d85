// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <cstdlib>

#include "platform/files/System.h"
#include "program/Program.h"
#include "ui/forms/frmMain.h"

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  int result = 0;
  {
    program::Program program(platform::files::ExecutableFolder());
    program.Window().showMaximized();
    result = QApplication::exec();
  }
  // Everything is saved; a worker that a dead disk holds must not meet what the end of the process takes
  // down.
  if (program::Program::LeftBehind()) std::_Exit(result);
  return result;
}
