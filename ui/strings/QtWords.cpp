// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/QtWords.h"

#include <string_view>

#include "ui/strings/QtTexts.h"

namespace ui {

QString QtWords::translate(const char* /*context*/, const char* words, const char* /*disambiguation*/,
                           int /*number*/) const {
  if (language_ == Strings::Language::English || words == nullptr) return {};
  for (const support::WordRow& row : QtTexts()) {
    if (std::string_view(row.texts.front()) == words) {
      return QString::fromUtf8(row.texts[static_cast<std::size_t>(language_)]);
    }
  }
  return {};
}

}  // namespace ui
