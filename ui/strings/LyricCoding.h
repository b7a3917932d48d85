// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <string>
#include <string_view>
#include <vector>

#include "ui/strings/LyricWords.h"

namespace ui {

/// A song's bytes as text: valid UTF-8 as such, anything else in the song's code page. coding: as iconv calls
/// it; empty, or one that is not known here: Windows-1252.
[[nodiscard]] QString DecodeLyric(std::string_view bytes, const std::string& coding);

/// A code page that can be chosen.
struct CodingChoice {
  const char* coding;
  LyricWord letters;  ///< what is written in it
};
/// Those that this system can read.
[[nodiscard]] const std::vector<CodingChoice>& CodingChoices();

}  // namespace ui
