// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about the light organ: 2730 to 2789.
enum class OrganWord : int {
  Modes = 2730,
};

[[nodiscard]] std::span<const Strings::Row> OrganWords();

}  // namespace ui
