// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string_view>

namespace karaoke {

/// What an error number of the multimedia command interface means, in the words this program has always used;
/// "Unknown Error." for a number that has none.
[[nodiscard]] std::string_view MciErrorText(std::uint32_t number);

}  // namespace karaoke
