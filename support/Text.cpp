// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace support {
namespace {

char UpperChar(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

template <typename Number>
std::optional<Number> ParseWhole(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  Number number{};
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

}  // namespace

std::string ToUpper(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), UpperChar);
  return upper;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return UpperChar(x) == UpperChar(y); });
}

std::string UpperTail(std::string_view text, std::size_t count) {
  return ToUpper(text.substr(text.size() - std::min(count, text.size())));
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::optional<std::int64_t> ParseInteger(std::string_view text) {
  return ParseWhole<std::int64_t>(text);
}

std::optional<double> ParseReal(std::string_view text) {
  return ParseWhole<double>(text);
}

std::int64_t LeadingInteger(std::string_view text) {
  text = Trim(text);
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

std::string FormatReal(double value, int decimals) {
  std::array<char, 400> buffer;  // the longest double has 309 digits before the point
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::fixed, std::clamp(decimals, 0, 20));
  return error == std::errc() ? std::string(buffer.data(), end) : std::string("0");
}

std::string FormatMinutes(std::int64_t seconds) {
  seconds = std::max<std::int64_t>(seconds, 0);
  const auto two_digits = [](std::int64_t n) { return (n < 10 ? "0" : "") + std::to_string(n); };
  return two_digits(seconds / 60) + ":" + two_digits(seconds % 60);
}

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    lines.push_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    const bool pair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
    text.remove_prefix(end + (pair ? 2 : 1));
  }
  return lines;
}

}  // namespace support
