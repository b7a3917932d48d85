// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/Run.h"

#include <QApplication>
#include <QMessageBox>
#include <cstdio>
#include <cstdlib>

#include "platform/files/EndRequests.h"
#include "program/OnlyProgram.h"
#include "program/Program.h"
#include "ui/forms/frmMain.h"

namespace program {
namespace {

/// Called by exit(): where the program still runs then, its window's library has lost the display.
void EndOfProcess() {
  if (!Program::Runs()) return;
  Program::EndWithoutWindow(Program::End::DisplayLost);
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

int Run(QApplication& application, const std::filesystem::path& folder,
        const std::function<void(ui::frmMain&)>& shown) {
  OnlyProgram only(folder);
  if (!only.MayRun()) {
    if (only.Trouble().empty()) return EXIT_SUCCESS;
    std::fprintf(stderr, "%s\n", only.Trouble().c_str());
    QMessageBox::warning(nullptr, QStringLiteral("dj TOLVEN"), QString::fromStdString(only.Trouble()));
    return EXIT_FAILURE;
  }
  int result = 0;
  {
    const platform::files::EndRequests requests(
        [&application] {
          // Also out of a question that waits for its answer: nobody may be there to give it.
          QMetaObject::invokeMethod(
              &application, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
        },
        [] { Program::EndWithoutWindow(Program::End::Asked); });
    Program program(folder);
    static_cast<void>(std::atexit(&EndOfProcess));
    only.OnAsked([&program] { program.Window().ComeToFront(); });
    program.Window().showMaximized();
    if (shown) shown(program.Window());
    result = QApplication::exec();
    only.OnAsked(nullptr);
  }
  // Everything is saved; a worker that a dead disk holds must not meet what the end of the process takes
  // down.
  if (Program::LeftBehind()) std::_Exit(result);
  return result;
}

}  // namespace program
