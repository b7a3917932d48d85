// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/SongWords.h"

namespace ui {
namespace {

constexpr Strings::Row kSongRows[] = {
    {SongWord::Singers, "Singers", "Zangers"},
};

}  // namespace

std::span<const Strings::Row> SongWords() {
  return kSongRows;
}

}  // namespace ui
