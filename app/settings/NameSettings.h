// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/settings/Settings.h"
#include "catalogue/NameRule.h"

namespace app {

/// How file names tell artist and title, as the section "Tags" says now.
[[nodiscard]] catalogue::NameRule ReadNameRule(const Settings& settings);

}  // namespace app
