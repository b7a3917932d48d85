// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "support/Settings.h"

namespace app {

/// Folders that are scanned together with the one of "Settings"/"Directory".
inline constexpr std::size_t kMostOtherFolders = 15;

/// In the order that they were added.
[[nodiscard]] std::vector<std::string> OtherFolders(const support::Settings& settings);
/// Each once; what is empty or too many is left out.
void StoreOtherFolders(support::Settings& settings, const std::vector<std::string>& folders);

}  // namespace app
