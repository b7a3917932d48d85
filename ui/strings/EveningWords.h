// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about the end of an evening, wanted or not: 2310 to 2319.
enum class EveningWord : int {
  MusicPlays = 2310,
  ShowPlays,
  Resume,
  ResumeTip,
};

[[nodiscard]] std::span<const Strings::Row> EveningWords();

}  // namespace ui
