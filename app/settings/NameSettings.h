// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/NameRule.h"
#include "support/Settings.h"

namespace app {

/// How file names tell artist and title, as the section "Tags" says now.
[[nodiscard]] catalogue::NameRule ReadNameRule(const support::Settings& settings);

}  // namespace app
