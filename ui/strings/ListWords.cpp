// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/ListWords.h"

namespace ui {
namespace {

constexpr Strings::Row kListRows[] = {
    {ListWord::Find, "Find", "Zoeken"},
};

}  // namespace

std::span<const Strings::Row> ListWords() {
  return kListRows;
}

}  // namespace ui
