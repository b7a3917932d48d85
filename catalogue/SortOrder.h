// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <vector>

#include "catalogue/track_table.h"

namespace catalogue {

enum class SortAs { Text, Number, Time };
enum class SortDirection { Up, Down };

/// What a grid is sorted by; column 0 leaves the table's own order.
struct SortWish {
  int column = 0;
  SortAs as = SortAs::Text;
  SortDirection direction = SortDirection::Up;
  bool operator==(const SortWish&) const = default;
};

/// All rows (from 1) in the order of a column: text as it is folded, numbers as numbers, times by their
/// length. Equal rows stay in the table's order; those with nothing to go by come last, in both directions.
/// Empty when it was told to stop. Threads: any; meant for a worker.
[[nodiscard]] std::vector<int> OrderBy(const track_table& table, const SortWish& wish,
                                       const std::atomic<bool>& stop);

/// Of all times in a column, such as "03:45"; what is none counts nothing.
[[nodiscard]] std::int64_t TotalSeconds(const track_table& table, int column);

}  // namespace catalogue
