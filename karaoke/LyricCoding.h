// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "karaoke/Lyric.h"
#include "karaoke/ports/CodePages.h"

namespace karaoke {

/// The code page of what is no UTF-8 in a song; empty where there is none such, or it is Windows-1252.
///
/// By what the file says, then by its language, then by all of its words together. names: what it is called
/// elsewhere, in bytes that may come from the file. pages: null when nobody can guess; then Shift-JIS is
/// told by its kana.
[[nodiscard]] std::string CodingOf(const Lyric& lyric, std::span<const std::string_view> names,
                                   CodePages* pages);

[[nodiscard]] bool IsUtf8(std::string_view text);

}  // namespace karaoke
