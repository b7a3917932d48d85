// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>

#include "platform/files/System.h"
#include "program/Program.h"
#include "ui/forms/frmMain.h"

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  program::Program program(platform::files::ExecutableFolder());
  program.Window().showMaximized();
  return QApplication::exec();
}
