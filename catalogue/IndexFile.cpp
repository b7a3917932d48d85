// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/IndexFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <functional>
#include <future>
#include <limits>
#include <optional>
#include <system_error>
#include <utility>

namespace catalogue {
namespace {

/// Thirteen of the longest cells, every byte of them escaped, still fit.
constexpr std::size_t kLongestLine = 1 << 21;
constexpr std::size_t kPiece = 1 << 18;
/// Lines that are not copied into a piece with others.
constexpr std::size_t kManyLines = 1 << 14;
constexpr std::uintmax_t kLargeFile = 1 << 22;
/// More rows than a table is good for, and the end of what has none, as a device.
constexpr std::uint64_t kLongestIndex = 1ULL << 30;
constexpr std::uint64_t kToTheEnd = std::numeric_limits<std::uint64_t>::max();

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

/// Where the first line begins behind a place in the file; 0 when there is none soon.
std::uint64_t LineStartBehind(const std::filesystem::path& path, std::uint64_t place) {
  std::ifstream file(path, std::ios::binary);
  std::vector<char> piece(kPiece / 4);
  file.seekg(static_cast<std::streamoff>(place));
  file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
  const std::string_view read(piece.data(), static_cast<std::size_t>(file.gcount()));
  const std::size_t feed = read.find('\n');
  return feed == std::string_view::npos ? 0 : place + feed + 1;
}

/// Adds the rows between two places of the file to the table; nothing when it cannot be read, or does not
/// end.
std::optional<IndexReport> LoadPart(const std::filesystem::path& path, std::uint64_t begin, std::uint64_t end,
                                    track_table& table, bool& too_long) {
  std::ifstream file(path, std::ios::binary);
  file.seekg(static_cast<std::streamoff>(begin));
  IndexParser parser(table);
  std::vector<char> piece(kPiece);
  while (file && begin < std::min(end, kLongestIndex)) {
    const std::uint64_t wanted = std::min<std::uint64_t>(piece.size(), end - begin);
    file.read(piece.data(), static_cast<std::streamsize>(wanted));
    const auto got = static_cast<std::size_t>(file.gcount());
    parser.Feed({piece.data(), got});
    begin += got;
  }
  if (begin < end && !file.eof()) {
    too_long = begin >= kLongestIndex;
    return std::nullopt;
  }
  return parser.Finish();
}

std::optional<IndexReport> Sum(const std::optional<IndexReport>& a, const std::optional<IndexReport>& b) {
  if (!a || !b) return std::nullopt;
  return IndexReport{a->rows + b->rows, a->short_rows + b->short_rows, a->long_rows + b->long_rows,
                     a->broken_rows + b->broken_rows};
}

}  // namespace

IndexParser::IndexParser(track_table& table) : table_(table), unescaped_(table.Columns().size()) {}

void IndexParser::Feed(std::string_view piece) {
  while (!piece.empty()) {
    if (after_return_ && piece.front() == '\n') piece.remove_prefix(1);
    after_return_ = false;
    if (unfinished_.empty() && !skipping_) TakePlainLines(piece);
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

void IndexParser::TakePlainLines(std::string_view& piece) {
  const int before = table_.Rows();
  piece.remove_prefix(table_.AddLines(piece));
  report_.rows += table_.Rows() - before;
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
  if (cells_.size() != columns) return Count(cells_.size());
  for (std::size_t i = 0; i < columns; ++i) {
    if (!Unescape(cells_[i], unescaped_[i])) return void(++report_.broken_rows);
  }
  table_.AddRow(cells_);
  Count(columns);
}

void IndexParser::Count(std::size_t cells) {
  const std::size_t columns = table_.Columns().size();
  ++(cells == columns ? report_.rows : cells < columns ? report_.short_rows : report_.long_rows);
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

namespace {

/// Rows whose paths are kept from the folder on get full ones.
void FollowFolder(track_table& table, const std::filesystem::path& folder) {
  const int column = table.FileColumn();
  bool any = false;
  table.VisitColumn(column, [&any](int, std::string_view cell) {
    any = cell.starts_with(support::ProgramFolder::kBelow);
    return !any;
  });
  if (!any) return;
  const support::ProgramFolder home(folder);
  track_table full(table.Columns());
  std::vector<std::string_view> cells(table.Columns().size());
  for (int row = 1; row <= table.Rows(); ++row) {
    table.Cells(row, cells);
    const std::string path = home.FullPath(cells[static_cast<std::size_t>(column - 1)]);
    cells[static_cast<std::size_t>(column - 1)] = path;
    full.AddRow(cells);
  }
  table = std::move(full);
}

}  // namespace

support::Result<IndexReport> LoadIndex(const std::filesystem::path& path, track_table& table,
                                       const support::Sentences& say) {
  table.Clear();
  std::error_code error;
  if (std::filesystem::status(path, error).type() == std::filesystem::file_type::not_found) {
    return support::Error{support::ErrorCode::NotFound,
                          say(support::Sentence::IndexMissing, {path.string()})};
  }
  error.clear();
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  const std::uint64_t middle = error || size < kLargeFile ? 0 : LineStartBehind(path, size / 2);
  track_table rest(table.Columns());
  bool too_long = false, rest_too_long = false;
  std::future<std::optional<IndexReport>> rest_read;
  const auto folder = std::filesystem::absolute(path, error).lexically_normal().parent_path();
  const auto load = [&](std::uint64_t begin, std::uint64_t end, track_table& part, bool& part_too_long) {
    const auto read = LoadPart(path, begin, end, part, part_too_long);
    FollowFolder(part, folder);
    return read;
  };
  if (middle != 0) rest_read = std::async([&] { return load(middle, kToTheEnd, rest, rest_too_long); });
  std::optional<IndexReport> report = load(0, middle != 0 ? middle : kToTheEnd, table, too_long);
  if (rest_read.valid()) {
    report = Sum(report, rest_read.get());
    table.AppendAll(std::move(rest));
  }
  if (report) return *report;
  table.Clear();
  if (too_long || rest_too_long) {
    return support::Error{
        support::ErrorCode::Unreadable,
        say(support::Sentence::IndexTooLong, {path.string(), std::to_string(kLongestIndex >> 20)})};
  }
  return support::Error{support::ErrorCode::Unreadable,
                        say(support::Sentence::IndexUnreadable, {path.string()})};
}

IndexPrinter::IndexPrinter(const track_table& table, const std::filesystem::path& folder)
    : table_(table),
      folder_(folder),
      below_(folder.empty() ? "" : (folder / "").string()),
      path_column_(table.FileColumn()),
      cells_(table.Columns().size()) {}

std::string_view IndexPrinter::Next() {
  piece_.clear();
  while (row_ <= table_.Rows() && piece_.size() < kPiece) {
    const track_table::Lines lines = table_.LinesFrom(row_);
    const bool as_they_stand = below_.empty() && lines.text.size() >= kManyLines;
    if (as_they_stand && !piece_.empty()) return piece_;
    row_ += std::max(lines.rows, 1);
    if (as_they_stand) return lines.text;
    if (lines.rows > 0) {
      AppendLines(lines.text);
    } else {
      AppendRow(row_ - 1);
    }
  }
  return piece_;
}

void IndexPrinter::AppendLines(std::string_view lines) {
  auto clean = lines.begin();
  if (!below_.empty()) {
    const std::boyer_moore_horspool_searcher search(below_.begin(), below_.end());
    for (auto at = std::search(lines.begin(), lines.end(), search); at != lines.end();
         at = std::search(at + 1, lines.end(), search)) {
      // A title may look like a path too, and a path may hold another one.
      const std::string_view before = lines.substr(0, static_cast<std::size_t>(at - lines.begin()));
      const std::string_view line = before.substr(before.find_last_of('\n') + 1);
      if (!line.ends_with('\t') || std::count(line.begin(), line.end(), '\t') != path_column_ - 1) continue;
      piece_.append(clean, at);
      piece_ += support::ProgramFolder::kBelow;
      clean = at + static_cast<std::ptrdiff_t>(below_.size());
    }
  }
  piece_.append(clean, lines.end());
}

void IndexPrinter::AppendRow(int row) {
  table_.Cells(row, cells_);
  std::string stored;
  if (!below_.empty() && path_column_ > 0) {
    std::string_view& path = cells_[static_cast<std::size_t>(path_column_ - 1)];
    stored = folder_.StoredPath(path);
    path = stored;
  }
  std::string_view separator;
  for (const std::string_view cell : cells_) {
    piece_ += separator;
    AppendEscaped(piece_, cell);
    separator = "\t";
  }
  piece_ += "\r\n";
}

std::string IndexText(const track_table& table) {
  std::string text;
  IndexPrinter printer(table);
  for (std::string_view piece = printer.Next(); !piece.empty(); piece = printer.Next()) text += piece;
  return text;
}

support::Result<void> SaveIndex(support::FileSaver& files, const std::filesystem::path& path,
                                const track_table& table, Paths paths) {
  IndexPrinter printer(table, paths == Paths::FromTheFolder ? path.parent_path() : std::filesystem::path());
  return files.SavePieces(path, [&printer] { return printer.Next(); });
}

}  // namespace catalogue
