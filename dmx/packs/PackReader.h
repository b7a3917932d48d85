// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>

#include "dmx/ports/FixtureFormats.h"
#include "support/Result.h"

namespace dmx {

/// The longest description of a fixture that is read.
inline constexpr std::uintmax_t kLongestPackFile = 4 << 20;

/// Reads one file of a fixture library. Where the file itself names no maker, the folder does that it lies
/// in, by its name in "manufacturers.json" beside that folder or in it; a file that points to another one is
/// that other one. Threads: any; blocks on the disk.
[[nodiscard]] support::Result<PackFixture> OpenPackFixture(const FixtureFormats& formats,
                                                           const std::filesystem::path& path);

}  // namespace dmx
