// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>

namespace decks::testing {

[[nodiscard]] inline std::string Hex(std::uint64_t value) {
  std::ostringstream text;
  text << "0x" << std::hex << value;
  return text.str();
}

/// The parts with a blank between them.
template <typename... Parts>
std::string Line(const Parts&... parts) {
  std::ostringstream text;
  std::string_view gap;
  ((text << gap << parts, gap = " "), ...);
  return text.str();
}

}  // namespace decks::testing
