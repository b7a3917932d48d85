// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/PatternBank.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "support/Text.h"

namespace lightorgan {
namespace {

/// Takes the first line off the text.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find_first_of("\r\n");
  const std::string_view line = text.substr(0, end);
  if (end == std::string_view::npos) {
    text = {};
    return line;
  }
  const bool pair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
  text.remove_prefix(end + (pair ? 2 : 1));
  return line;
}

bool IsHeader(std::string_view line) {
  return !line.empty() && line.front() == '[';
}

/// Nothing for a header without "]" or without a number.
std::optional<std::int64_t> NumberOf(std::string_view header) {
  const std::size_t end = header.find(']');
  if (end == std::string_view::npos) return std::nullopt;
  return support::ParseInteger(support::Trim(header.substr(1, end - 1)));
}

std::optional<std::int32_t> Value(std::string_view text) {
  const auto value = support::ParseInteger(support::Trim(text));
  if (!value || *value < std::numeric_limits<std::int32_t>::min() ||
      *value > std::numeric_limits<std::int32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::int32_t>(*value);
}

/// What of a step's line holds the outputs' values.
std::string_view Values(std::string_view line) {
  return line.substr(0, line.find(';'));
}

void AddStep(StepTable& table, std::string_view line) {
  table.AddRow();
  for (int output = 1; output <= table.Outputs(); ++output) {
    const std::size_t end = line.find(':');
    if (const auto value = Value(line.substr(0, end))) table.Set(output, *value);
    if (end == std::string_view::npos) return;
    line.remove_prefix(end + 1);
  }
}

BankStep ParseStep(std::string_view line) {
  BankStep step;
  const std::string_view values = Values(line);
  step.further = line.substr(values.size());
  for (const std::string_view part : support::Split(values, ':')) {
    if (step.values.size() == kMostOutputs) break;
    step.values.push_back(Value(part).value_or(0));
  }
  return step;
}

}  // namespace

std::string_view BankFileName(Side side, IoBoardSize size) {
  if (side == Side::Io) return size == IoBoardSize::Two ? "\\BankIO32.txt" : "\\BankIO16.txt";
  return size == IoBoardSize::Two ? "\\BankDAC32.txt" : "\\BankDAC16.txt";
}

void StepTable::Set(int output, std::int32_t value) {
  if (output < 1 || output > outputs_) return;
  values_[values_.size() - static_cast<std::size_t>(outputs_ - output + 1)] = value;
}

std::int32_t StepTable::At(int row, int output) const {
  if (row < 1 || row > Rows() || output < 1 || output > outputs_) return 0;
  return values_[static_cast<std::size_t>((row - 1) * outputs_ + output - 1)];
}

StepTable LoadBank(std::string_view text, Side side, int number, IoBoardSize size) {
  StepTable table(size);
  bool counting = false;
  while (!text.empty() && table.Rows() < kMostRows) {
    const std::string_view line = TakeLine(text);
    if (counting) AddStep(table, side == Side::Dac ? Values(line) : line);
    if (!IsHeader(line)) continue;
    const auto found = NumberOf(line);
    if (found == number) counting = true;
    if (found > number) break;
  }
  return table;
}

std::uint8_t PatternByte(const StepTable& table, int row, int board) {
  unsigned byte = 0;
  for (int channel = 1; channel <= kBoardChannels; ++channel) {
    if (table.At(row, board * kBoardChannels + channel) == 1) byte |= 1U << (channel - 1);
  }
  return static_cast<std::uint8_t>(byte);
}

std::vector<Bank> ParseBanks(std::string_view text) {
  std::vector<Bank> banks;
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    if (IsHeader(line)) {
      const auto number = NumberOf(line);
      const bool fits = number && *number >= 0 && *number <= std::numeric_limits<int>::max();
      if (fits) banks.push_back({static_cast<int>(*number), {}});
    } else if (!banks.empty() && banks.back().steps.size() < kMostRows) {
      banks.back().steps.push_back(ParseStep(line));
    }
  }
  return banks;
}

std::string BankText(std::vector<Bank> banks) {
  std::stable_sort(banks.begin(), banks.end(),
                   [](const Bank& a, const Bank& b) { return a.number < b.number; });
  std::string text;
  for (const Bank& bank : banks) {
    text.append("[").append(std::to_string(bank.number)).append("]\r\n");
    for (const BankStep& step : bank.steps) {
      for (std::size_t i = 0; i < step.values.size(); ++i) {
        if (i > 0) text += ':';
        text += std::to_string(step.values[i]);
      }
      text.append(step.further).append("\r\n");
    }
  }
  return text;
}

}  // namespace lightorgan
