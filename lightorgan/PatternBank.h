// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lightorgan/Outputs.h"

namespace lightorgan {

/// Which side of the board a bank is for.
enum class Side { Io, Dac };

/// "\BankIO16.txt" and its three companions.
[[nodiscard]] std::string_view BankFileName(Side side, IoBoardSize size);

/// A bank as it is played: rows of one value an output.
class StepTable {
 public:
  StepTable() = default;
  explicit StepTable(IoBoardSize size) : outputs_(OutputsOf(size)) {}

  /// All zero.
  void AddRow() { values_.resize(values_.size() + static_cast<std::size_t>(outputs_)); }
  /// In the last row; an output that the board has not is left out. Requires: a row.
  void Set(int output, std::int32_t value);
  /// Row and output count from 1; 0 outside of the table.
  [[nodiscard]] std::int32_t At(int row, int output) const;
  [[nodiscard]] int Rows() const { return static_cast<int>(values_.size()) / outputs_; }
  [[nodiscard]] int Outputs() const { return outputs_; }

 private:
  int outputs_ = kBoardChannels;
  std::vector<std::int32_t> values_;
};

/// Reads bank number of a bank file: the lines behind its header "[number]" up to a header with a greater
/// one. The header that ends the bank makes a row too, of zeros; a bank that is not there has no row. What is
/// no number leaves its zero. Rows beyond kMostRows are left out.
[[nodiscard]] StepTable LoadBank(std::string_view text, Side side, int number, IoBoardSize size);
inline constexpr int kMostRows = 65'536;

/// The row that follows when a pattern of so many rows plays; both count from 1. The IO side never comes to
/// the row numbered by the count, unless it is the only one; the DAC side plays every row.
/// Other banks end in the row of zeros that the next header makes; the last one has none, so its final step
/// is lost.
[[nodiscard]] constexpr int NextRow(Side side, int row, int rows) {
  const int next = row + 1;
  const bool over = side == Side::Io ? next >= rows : next > rows;
  return over ? 1 : next;
}

/// One board's switched outputs in a row, bit (channel - 1) set where the value is 1.
[[nodiscard]] std::uint8_t PatternByte(const StepTable& table, int row, int board);

// The file as it is edited: without the rows that playing makes of headers.

struct BankStep {
  std::vector<std::int32_t> values;  ///< of output 1 and up
  std::string further;               ///< what stands behind the values of a DAC step, from its ";" on
  bool operator==(const BankStep&) const = default;
};
struct Bank {
  int number = 0;
  std::vector<BankStep> steps;
  bool operator==(const Bank&) const = default;
};

/// Lines before the first header belong to no bank and are dropped.
[[nodiscard]] std::vector<Bank> ParseBanks(std::string_view text);
/// In ascending order of their numbers.
[[nodiscard]] std::string BankText(std::vector<Bank> banks);

}  // namespace lightorgan
