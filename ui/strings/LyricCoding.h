// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <span>
#include <string_view>

namespace ui {

/// How a song's words are written down; its file does not say.
enum class LyricCoding {
  Western,  ///< UTF-8, else Windows-1252
  ShiftJis  ///< UTF-8, else Shift-JIS
};

/// Told from all texts of a song together: Shift-JIS where what is no UTF-8 has kana in it.
[[nodiscard]] LyricCoding CodingOf(std::span<const std::string_view> texts);

[[nodiscard]] QString DecodeLyric(std::string_view bytes, LyricCoding coding);

}  // namespace ui
