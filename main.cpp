// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>

#include "platform/files/System.h"
#include "program/Run.h"

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  return program::Run(application, platform::files::ExecutableFolder());
}
