// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace support {

/// A text as whole characters of UTF-8, cut to `most` bytes between two of them: what is none is taken for
/// Western Europe's old code page.
[[nodiscard]] std::string AsUtf8(std::string_view text, std::size_t most);

/// A text as a file or folder may be called on every system, sticks formatted with FAT and Windows included:
/// without \ / : * ? " < > | and control characters, without a dot or blank at its end, no name of a device
/// (CON, LPT1), cut to `most` bytes between two characters. "_" where nothing is left.
[[nodiscard]] std::string CleanFileName(std::string_view text, std::size_t most = 120);

}  // namespace support
