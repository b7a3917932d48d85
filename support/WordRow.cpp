// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/WordRow.h"

#include <algorithm>
#include <iterator>

namespace support {

const char* TextOf(std::span<const WordRow> rows, int number, Language language) {
  const auto row = std::lower_bound(rows.begin(), rows.end(), number,
                                    [](const WordRow& one, int wanted) { return one.number < wanted; });
  if (row == rows.end() || row->number != number) return "";
  return row->texts[static_cast<std::size_t>(language)];
}

Language LanguageOf(std::int64_t choice) {
  return choice >= 0 && choice < kLanguageCount ? static_cast<Language>(choice) : Language::English;
}

Language LanguageOfBase(int base) {
  const auto* const row = std::find_if(std::begin(kLanguages), std::end(kLanguages),
                                       [base](const LanguageRow& one) { return one.base == base; });
  return LanguageOf(row - std::begin(kLanguages));
}

int BaseOf(Language language) {
  return kLanguages[static_cast<std::size_t>(language)].base;
}

}  // namespace support
