// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QMessageBox>
#include <cstdio>
#include <cstdlib>

#include "platform/files/System.h"
#include "program/OnlyProgram.h"
#include "program/Program.h"
#include "ui/forms/frmMain.h"

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  const std::filesystem::path folder = platform::files::ExecutableFolder();
  program::OnlyProgram only(folder);
  if (!only.MayRun()) {
    if (only.Trouble().empty()) return 0;
    std::fprintf(stderr, "%s\n", only.Trouble().c_str());
    QMessageBox::warning(nullptr, QStringLiteral("dj TOLVEN"), QString::fromStdString(only.Trouble()));
    return 1;
  }
  int result = 0;
  {
    program::Program program(folder);
    only.OnAsked([&program] { program.Window().ComeToFront(); });
    program.Window().showMaximized();
    result = QApplication::exec();
    only.OnAsked(nullptr);
  }
  // Everything is saved; a worker that a dead disk holds must not meet what the end of the process takes
  // down.
  if (program::Program::LeftBehind()) std::_Exit(result);
  return result;
}
