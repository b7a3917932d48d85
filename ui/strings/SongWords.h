// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about karaoke: 2790 to 2849.
enum class SongWord : int {
  Singers = 2790,
};

[[nodiscard]] std::span<const Strings::Row> SongWords();

}  // namespace ui
