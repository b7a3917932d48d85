// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/PartLines.h"

#include <fstream>
#include <iterator>
#include <system_error>

namespace support {
namespace {

using std::chrono::microseconds;

constexpr std::string_view kSum = "sum=";
constexpr microseconds kMostTime = std::chrono::hours(1000);
constexpr char kHex[] = "0123456789abcdef";

/// FNV-1a: it finds a file that was written in part, which is all that it is for.
std::string SumOf(std::string_view text) {
  std::uint64_t sum = 14695981039346656037U;
  for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 1099511628211U;
  std::string hex;
  for (int shift = 60; shift >= 0; shift -= 4) hex += kHex[sum >> shift & 15];
  return hex;
}

int Digit(char c) {
  const auto* const place = std::find(std::begin(kHex), std::end(kHex) - 1, c);
  return place == std::end(kHex) - 1 ? -1 : static_cast<int>(place - std::begin(kHex));
}

/// In one line, whatever the name of a file holds.
std::string Escaped(std::string_view text) {
  std::string line;
  for (const char c : text) {
    if (c != '\r' && c != '\n' && c != '%') {
      line += c;
    } else {
      line += '%';
      AppendHex(line, static_cast<unsigned char>(c));
    }
  }
  return line;
}

}  // namespace

void AppendHex(std::string& text, unsigned char byte) {
  text += kHex[byte >> 4];
  text += kHex[byte & 15];
}

std::optional<unsigned char> HexAt(std::string_view text, std::size_t place) {
  if (place + 2 > text.size()) return std::nullopt;
  const int high = Digit(text[place]), low = Digit(text[place + 1]);
  if (high < 0 || low < 0) return std::nullopt;
  return static_cast<unsigned char>(high << 4 | low);
}

void PartWriter::Part(std::string_view name) {
  text_.append("[").append(name).append("]\r\n");
}

void PartWriter::Text(std::string_view key, std::string_view value) {
  if (!value.empty()) text_.append(key).append("=").append(Escaped(value)).append("\r\n");
}

std::string PartValue::Text() const {
  std::string text;
  for (std::size_t i = 0; i < text_.size(); ++i) {
    const auto byte = text_[i] == '%' ? HexAt(text_, i + 1) : std::nullopt;
    text += byte ? static_cast<char>(*byte) : text_[i];
    if (byte) i += 2;
  }
  return text;
}

void PartValue::Time(microseconds& into) const {
  std::int64_t count = into.count();
  Number(count, 0, kMostTime.count());
  into = microseconds(count);
}

void PartValue::Time(std::optional<microseconds>& into) const {
  microseconds time{0};
  Time(time);
  into = time;
}

void ReadParts(std::string_view lines, const PartTaker& taker) {
  std::string_view part;
  for (const std::string_view line : SplitLines(lines)) {
    if (line.starts_with('[') && line.ends_with(']')) {
      part = line.substr(1, line.size() - 2);
      if (taker.begin) taker.begin(part);
      continue;
    }
    const std::size_t sign = line.find('=');
    if (sign == std::string_view::npos) continue;
    taker.take(part, line.substr(0, sign), PartValue(line.substr(sign + 1)));
  }
}

std::string SealedText(std::string_view head, std::string_view lines) {
  std::string text = std::string(head) + "\r\n";
  text += lines;
  return text + std::string(kSum) + SumOf(text) + "\r\n";
}

std::optional<std::string_view> LinesOfSealed(std::string_view head, std::string_view text) {
  const std::size_t end = text.rfind(kSum);
  if (!text.starts_with(head) || end == std::string_view::npos || end < head.size()) return std::nullopt;
  const std::string_view above = text.substr(0, end);
  if (Trim(text.substr(end + kSum.size())) != SumOf(above)) return std::nullopt;
  return above.substr(head.size());
}

std::optional<std::string> ReadWholeFile(const std::filesystem::path& path, std::size_t most) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  std::ifstream file(path, std::ios::binary);
  std::string text(error ? most + 1 : static_cast<std::size_t>(std::min<std::uintmax_t>(size, most)) + 1,
                   '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
  return text;
}

}  // namespace support
