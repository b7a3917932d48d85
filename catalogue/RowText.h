// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace catalogue {

/// Takes the cells off a row as it lies in a table: a line of index text where all cells are plain, else
/// packed, each cell with its length before it.
class RowReader {
 public:
  explicit RowReader(std::string_view row);
  /// Empty ones when there are no more.
  std::string_view Next();

 private:
  std::string_view rest_;
  bool packed_;
};

/// One of them, column from 1; empty where there is none, or no row.
[[nodiscard]] std::string_view CellOf(std::string_view row, int column);

/// Appends a row of that many columns; missing cells are empty, and no cell is longer than a table takes.
void AppendRow(std::string& rows, std::span<const std::string_view> cells, std::size_t columns);

/// Whether a row lies as its line, line end included.
[[nodiscard]] inline bool IsLine(std::string_view row) {
  return row.front() != '\0';
}

/// A plain line that a text begins with: one cell a column and a tab between them, CR LF behind them, no
/// other character below the blank and no backslash.
struct Line {
  std::size_t size = 0;   ///< 0 where the text begins with anything else
  std::string_view cell;  ///< of the column asked for
};
/// column from 1; 0 asks for none.
[[nodiscard]] Line LineOf(std::string_view text, std::size_t columns, std::size_t column = 0);

}  // namespace catalogue
