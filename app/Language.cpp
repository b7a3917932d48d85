// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Language.h"

#include "support/Settings.h"
#include "support/WordRow.h"

namespace app {

void Language::Read() {
  base_ = support::BaseOf(support::LanguageOf(settings_.Number("Language", "Current")));
  say_.Choose(base_);
}

void Language::Choose(int language) {
  settings_.SetNumber("Language", "Current", static_cast<int>(support::LanguageOf(language)));
  Read();
}

}  // namespace app
