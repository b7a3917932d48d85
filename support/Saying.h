// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace support {

enum class Sentence : int;

/// A sentence of the table and what fills its places. Who shows it chooses the language.
struct Saying {
  Sentence sentence{};  ///< none of the table: nothing is said
  std::vector<std::string> parts{};
  std::vector<Saying> reasons{};  ///< fill the places behind the parts
  bool operator==(const Saying&) const = default;
};

}  // namespace support
