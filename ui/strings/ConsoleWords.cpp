// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/ConsoleWords.h"

namespace ui {
namespace {

constexpr Strings::Row kConsoleRows[] = {
    {ConsoleWord::Master, "Master", "Master"},
};

}  // namespace

std::span<const Strings::Row> ConsoleWords() {
  return kConsoleRows;
}

}  // namespace ui
