// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about the fixture and show editors: 2900 to 2999.
enum class EditorWord : int {
  Library = 2900,
};

[[nodiscard]] std::span<const Strings::Row> EditorWords();

}  // namespace ui
