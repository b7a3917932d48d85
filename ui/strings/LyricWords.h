// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about the look and the letters of karaoke words: 2979 to 2998.
enum class LyricWord : int {
  Look = 2979,
  LookTip,
  LookStage,
  LookOwn,
  Coding,
  CodingTip,
  CodingGuessed,
  CodingOf,
  Western,
  CentralEuropean,
  Cyrillic,
  Greek,
  Turkish,
  Hebrew,
  Arabic,
  Vietnamese,
  Thai,
  Japanese,
  Korean,
  Chinese,
};

[[nodiscard]] std::span<const Strings::Row> LyricWords();

}  // namespace ui
