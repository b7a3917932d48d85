// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about the light console: 2850 to 2899.
enum class ConsoleWord : int {
  Master = 2850,
};

[[nodiscard]] std::span<const Strings::Row> ConsoleWords();

}  // namespace ui
