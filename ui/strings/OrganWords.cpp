// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/OrganWords.h"

namespace ui {
namespace {

constexpr Strings::Row kOrganRows[] = {
    {OrganWord::Modes, "Modes", "Standen"},
};

}  // namespace

std::span<const Strings::Row> OrganWords() {
  return kOrganRows;
}

}  // namespace ui
