// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/IndexFile.h"

#include <array>
#include <fstream>
#include <optional>
#include <system_error>

namespace catalogue {
namespace {

/// Thirteen of the longest cells, every byte of them escaped, still fit.
constexpr std::size_t kLongestLine = 1 << 21;
constexpr std::size_t kPiece = 1 << 20;

/// The character behind the backslash for one that a cell cannot hold as it is, 0 for all others.
constexpr std::array<char, 256> kEscapes = [] {
  std::array<char, 256> escapes{};
  escapes['\t'] = 't';
  escapes['\r'] = 'r';
  escapes['\n'] = 'n';
  escapes['\\'] = '\\';
  return escapes;
}();

std::optional<char> Escaped(char letter) {
  switch (letter) {
    case 't':
      return '\t';
    case 'r':
      return '\r';
    case 'n':
      return '\n';
    case '\\':
      return '\\';
    default:
      return std::nullopt;
  }
}

void AppendEscaped(std::string& text, std::string_view cell) {
  std::size_t clean = 0;
  for (std::size_t i = 0; i < cell.size(); ++i) {
    const char letter = kEscapes[static_cast<unsigned char>(cell[i])];
    if (letter == 0) continue;
    text.append(cell, clean, i - clean);
    text += '\\';
    text += letter;
    clean = i + 1;
  }
  text.append(cell, clean);
}

/// The nearest line end of either kind.
std::size_t FindLineEnd(std::string_view text) {
  const std::size_t feed = text.find('\n');
  const std::size_t carriage = text.substr(0, feed).find('\r');
  return carriage == std::string_view::npos ? feed : carriage;
}

}  // namespace

IndexParser::IndexParser(track_table& table) : table_(table), unescaped_(table.Columns().size()) {}

void IndexParser::Feed(std::string_view piece) {
  while (!piece.empty()) {
    if (after_return_ && piece.front() == '\n') piece.remove_prefix(1);
    after_return_ = false;
    const std::size_t end = FindLineEnd(piece);
    const std::string_view part = piece.substr(0, end);
    if (unfinished_.size() + part.size() > kLongestLine) skipping_ = true;
    if (end == std::string_view::npos) {
      if (!skipping_) unfinished_ += part;
      return;
    }
    if (unfinished_.empty() || skipping_) {
      TakeLine(part);
    } else {
      TakeLine(unfinished_.append(part));
    }
    unfinished_.clear();
    after_return_ = piece[end] == '\r';
    piece.remove_prefix(end + 1);
  }
}

IndexReport IndexParser::Finish() {
  if (skipping_ || !unfinished_.empty()) TakeLine(unfinished_);
  unfinished_.clear();
  return report_;
}

void IndexParser::TakeLine(std::string_view line) {
  if (skipping_) {
    skipping_ = false;
    ++report_.broken_rows;
    return;
  }
  const std::size_t columns = table_.Columns().size();
  cells_.clear();
  for (std::size_t tab = line.find('\t'); tab != std::string_view::npos; tab = line.find('\t')) {
    cells_.push_back(line.substr(0, tab));
    line.remove_prefix(tab + 1);
    if (cells_.size() == columns) break;
  }
  cells_.push_back(line);
  if (cells_.size() < columns) return void(++report_.short_rows);
  if (cells_.size() > columns) return void(++report_.long_rows);
  for (std::size_t i = 0; i < columns; ++i) {
    if (!Unescape(cells_[i], unescaped_[i])) return void(++report_.broken_rows);
  }
  table_.AddRow(cells_);
  ++report_.rows;
}

bool IndexParser::Unescape(std::string_view& cell, std::string& storage) const {
  std::size_t escape = cell.find('\\');
  if (escape == std::string_view::npos) return true;
  storage.clear();
  std::string_view rest = cell;
  for (; escape != std::string_view::npos; escape = rest.find('\\')) {
    const std::optional<char> letter = escape + 1 < rest.size() ? Escaped(rest[escape + 1]) : std::nullopt;
    if (!letter) return false;
    storage.append(rest, 0, escape);
    storage += *letter;
    rest.remove_prefix(escape + 2);
  }
  storage += rest;
  cell = storage;
  return true;
}

support::Result<IndexReport> LoadIndex(const std::filesystem::path& path, track_table& table,
                                       const support::Sentences& say) {
  table.Clear();
  std::error_code error;
  if (!std::filesystem::exists(path, error)) {
    return support::Error{support::ErrorCode::NotFound,
                          say(support::Sentence::IndexMissing, {path.string()})};
  }
  std::ifstream file(path, std::ios::binary);
  IndexParser parser(table);
  std::vector<char> piece(kPiece);
  while (file) {
    file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
    parser.Feed({piece.data(), static_cast<std::size_t>(file.gcount())});
  }
  const IndexReport report = parser.Finish();
  if (file.eof()) return report;
  table.Clear();
  return support::Error{support::ErrorCode::Unreadable,
                        say(support::Sentence::IndexUnreadable, {path.string()})};
}

std::string IndexText(const track_table& table) {
  std::string text;
  std::vector<std::string_view> cells(table.Columns().size());
  for (int row = 1; row <= table.Rows(); ++row) {
    table.Cells(row, cells);
    std::string_view separator;
    for (const std::string_view cell : cells) {
      text += separator;
      AppendEscaped(text, cell);
      separator = "\t";
    }
    text += "\r\n";
  }
  return text;
}

support::Result<void> SaveIndex(support::FileSaver& files, const std::filesystem::path& path,
                                const track_table& table) {
  return files.Save(path, IndexText(table));
}

}  // namespace catalogue
