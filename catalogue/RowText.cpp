// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/RowText.h"

#include <algorithm>
#include <bit>
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

/// The tabs of a line as they are met, and the ends of one of its cells.
struct Tabs {
  std::size_t column;  ///< from 1; 0: none
  std::size_t count = 0;
  std::size_t begin = 0;  ///< of the cell
  std::size_t end = 0;

  void Meet(std::size_t at) {
    ++count;
    if (count + 1 == column) begin = at + 1;
    if (count == column) end = at;
  }
  /// Those of eight characters.
  void MeetAll(std::uint64_t tops, std::size_t at) {
    const std::size_t more = Count(tops);
    if (count + more + 1 < column || count >= column) {
      count += more;
      return;
    }
    for (; tops != 0; tops &= tops - 1) Meet(at + PlaceOf(tops));
  }
  /// Of the first character that is meant.
  static std::size_t PlaceOf(std::uint64_t tops) {
    const int zeros = std::endian::native == std::endian::little ? std::countr_zero(tops) : 0;
    return static_cast<std::size_t>(zeros) / 8;
  }
};

/// The plain characters and tabs that a text begins with, up to seven of the last ones left out.
std::size_t SkipPlain(std::string_view text, Tabs& tabs) {
  std::size_t at = 0;
  for (std::uint64_t word = 0; at + sizeof word <= text.size(); at += sizeof word) {
    std::memcpy(&word, text.data() + at, sizeof word);
    const std::uint64_t tab = Equal(word, '\t');
    if ((Control(word) | Equal(word, '\\')) != tab) break;
    if (tab != 0) tabs.MeetAll(tab, at);
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

std::string_view CellOf(std::string_view row, int column) {
  if (row.empty()) return {};
  if (!IsLine(row)) {
    RowReader cells(row);
    for (int before = 1; before < column; ++before) cells.Next();
    return cells.Next();
  }
  const char* at = row.data();
  const char* const end = at + row.size() - kLineEnd.size();
  const auto tab = [&] {
    return static_cast<const char*>(std::memchr(at, '\t', static_cast<std::size_t>(end - at)));
  };
  for (; column > 1; --column) {
    const char* const found = tab();
    if (found == nullptr) return {};
    at = found + 1;
  }
  const char* const found = tab();
  return {at, static_cast<std::size_t>((found == nullptr ? end : found) - at)};
}

void AppendRow(std::string& rows, std::span<const std::string_view> cells, std::size_t columns) {
  cells = cells.first(std::min(cells.size(), columns));
  const std::size_t start = rows.size();
  for (std::size_t i = 0; i < columns; ++i) {
    if (i > 0) rows += '\t';
    if (i < cells.size()) rows += cells[i].substr(0, track_table::kLongestCell);
  }
  rows += kLineEnd;
  if (LineOf(std::string_view(rows).substr(start), columns).size == rows.size() - start) return;
  rows.resize(start);
  rows += kPacked;
  for (const std::string_view cell : cells) AppendPacked(rows, cell.substr(0, track_table::kLongestCell));
}

Line LineOf(std::string_view text, std::size_t columns, std::size_t column) {
  text = text.substr(0, track_table::kLongestCell);
  Tabs tabs{column};
  for (std::size_t at = SkipPlain(text, tabs); at < text.size(); ++at) {
    if (text[at] == '\t') {
      tabs.Meet(at);
    } else if (!IsPlain(text[at])) {
      const bool ends = text.substr(at, kLineEnd.size()) == kLineEnd;
      if (!ends || tabs.count + 1 != columns) return {};
      const std::size_t end = column == columns ? at : tabs.end;
      return {at + kLineEnd.size(), text.substr(tabs.begin, end - tabs.begin)};
    }
  }
  return {};
}

}  // namespace catalogue
