// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// The rows of Say from those of the lights on, 2480 to 2639.
[[nodiscard]] std::span<const Strings::Row> ToolWords();

}  // namespace ui
