// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "support/Languages.h"

namespace support {

/// A text in every language. Tables of them are made at build time, see tools/words.py, by rising
/// number.
struct WordRow {
  int number;
  std::array<const char*, kLanguageCount> texts;
};

/// The tip of a word has the number of the word and this.
inline constexpr int kTips = 10000;

/// Empty for a number that is not there.
[[nodiscard]] const char* TextOf(std::span<const WordRow> rows, int number, Language language);

/// The language of a stored choice, 0 and on; English for any other.
[[nodiscard]] Language LanguageOf(std::int64_t choice);
/// The language whose texts have this base; English where there is none.
[[nodiscard]] Language LanguageOfBase(int base);
/// What is added to the number of every text of a language.
[[nodiscard]] int BaseOf(Language language);

}  // namespace support
