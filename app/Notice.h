// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace app {

/// A sentence for the status line.
struct Notice {
  enum class Kind {
    Passing,  ///< news, of which nobody need speak for long
    Warning   ///< to be shown until it was seen
  };
  std::uint64_t number = 0;  ///< the newer, the higher
  Kind kind = Kind::Passing;
  std::string text;
};

}  // namespace app
