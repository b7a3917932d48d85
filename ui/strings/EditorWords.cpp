// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/EditorWords.h"

namespace ui {
namespace {

constexpr Strings::Row kEditorRows[] = {
    {EditorWord::Library, "Fixture library", "Armaturen"},
};

}  // namespace

std::span<const Strings::Row> EditorWords() {
  return kEditorRows;
}

}  // namespace ui
