// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace support {

/// A name as it may be kept and shown, whoever gave it: control characters and those that turn the direction
/// of what stands beside them become one blank, none at its ends; at most so many bytes of UTF-8, cut between
/// letters.
[[nodiscard]] std::string CleanLine(std::string_view text, std::size_t most);

}  // namespace support
