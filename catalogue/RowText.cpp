// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/RowText.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "catalogue/track_table.h"

namespace catalogue {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr char kPacked = '\0';  // no line begins with it
constexpr std::uint64_t kOnes = 0x0101010101010101, kTops = kOnes * 0x80;

// Eight characters at a time: the top bit of each that is meant, and nothing else.

std::uint64_t Equal(std::uint64_t word, char wanted) {
  const std::uint64_t differs = word ^ (kOnes * static_cast<unsigned char>(wanted));
  return ~(((differs & ~kTops) + ~kTops) | differs) & kTops;
}

std::uint64_t Control(std::uint64_t word) {
  return ~(((word & ~kTops) + kOnes * (0x80 - ' ')) | word) & kTops;
}

std::size_t Count(std::uint64_t tops) {
  return static_cast<std::size_t>(((tops >> 7) * kOnes) >> 56);
}

bool IsPlain(char letter) {
  return static_cast<unsigned char>(letter) >= ' ' && letter != '\\';
}

/// The plain characters and tabs that a text begins with, up to seven of the last ones left out, and how many
/// of them are tabs.
std::size_t SkipPlain(std::string_view text, std::size_t& tabs) {
  std::size_t at = 0;
  for (std::uint64_t word = 0; at + sizeof word <= text.size(); at += sizeof word) {
    std::memcpy(&word, text.data() + at, sizeof word);
    const std::uint64_t tab = Equal(word, '\t');
    if ((Control(word) | Equal(word, '\\')) != tab) break;
    tabs += Count(tab);
  }
  return at;
}

/// Lengths take seven bits a byte, the lowest first; the top bit stands for "more follows".
void AppendPacked(std::string& rows, std::string_view cell) {
  std::size_t length = cell.size();
  for (; length >= 0x80; length >>= 7) rows.push_back(static_cast<char>((length & 0x7F) | 0x80));
  rows.push_back(static_cast<char>(length));
  rows += cell;
}

std::string_view TakePacked(std::string_view& rest) {
  std::size_t length = 0;
  int shift = 0;
  std::size_t used = 0;
  while (used < rest.size()) {
    const auto byte = static_cast<unsigned char>(rest[used++]);
    length |= static_cast<std::size_t>(byte & 0x7F) << shift;
    if ((byte & 0x80) == 0) break;
    shift += 7;
  }
  const std::string_view cell = rest.substr(used, length);
  rest.remove_prefix(used + cell.size());
  return cell;
}

}  // namespace

RowReader::RowReader(std::string_view row) : rest_(row), packed_(!row.empty() && !IsLine(row)) {
  if (packed_) {
    rest_.remove_prefix(1);
  } else if (!rest_.empty()) {
    rest_.remove_suffix(kLineEnd.size());
  }
}

std::string_view RowReader::Next() {
  if (packed_) return TakePacked(rest_);
  const std::string_view cell = rest_.substr(0, rest_.find('\t'));
  rest_.remove_prefix(std::min(rest_.size(), cell.size() + 1));
  return cell;
}

void AppendRow(std::string& rows, std::span<const std::string_view> cells, std::size_t columns) {
  cells = cells.first(std::min(cells.size(), columns));
  const std::size_t start = rows.size();
  for (std::size_t i = 0; i < columns; ++i) {
    if (i > 0) rows += '\t';
    if (i < cells.size()) rows += cells[i].substr(0, track_table::kLongestCell);
  }
  rows += kLineEnd;
  if (LineSize(std::string_view(rows).substr(start), columns) == rows.size() - start) return;
  rows.resize(start);
  rows += kPacked;
  for (const std::string_view cell : cells) AppendPacked(rows, cell.substr(0, track_table::kLongestCell));
}

std::size_t LineSize(std::string_view text, std::size_t columns) {
  text = text.substr(0, track_table::kLongestCell);
  std::size_t tabs = 0;
  for (std::size_t at = SkipPlain(text, tabs); at < text.size(); ++at) {
    if (text[at] == '\t') {
      ++tabs;
    } else if (!IsPlain(text[at])) {
      const bool ends = text.substr(at, kLineEnd.size()) == kLineEnd;
      return ends && tabs + 1 == columns ? at + kLineEnd.size() : 0;
    }
  }
  return 0;
}

}  // namespace catalogue
