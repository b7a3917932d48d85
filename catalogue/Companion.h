// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace catalogue {

/// The file beside this one that has its name with another extension (without the dot), whatever the letter
/// case of either; of several the one that is written as this one is, else the first in byte order. Empty
/// where none is there.
/// Threads: a worker; blocks on the disk.
[[nodiscard]] std::string CompanionOf(const std::string& path, std::string_view extension);

}  // namespace catalogue
