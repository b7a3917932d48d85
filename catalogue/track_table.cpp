// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/track_table.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

#include "support/Text.h"

namespace catalogue {
namespace {

constexpr std::array<Column, 13> kTrackColumns{{{"Artist", 120, true},
                                                {"Title", 120, true},
                                                {"Time", 50, true},
                                                {"Filename", 0, false},
                                                {"BPM", 50, true},
                                                {"Genre", 0, false},
                                                {"Album", 0, false},
                                                {"Year", 0, false},
                                                {"Bitrate", 0, false},
                                                {"Freq", 0, false},
                                                {"Gain", 0, false},
                                                {"StartMixPoint", 0, false},
                                                {"EndMixPoint", 0, false}}};

constexpr std::array<Column, 6> kKaraokeColumns{{{"Artist", 120, true},
                                                 {"Title", 120, true},
                                                 {"Origin", 0, false},
                                                 {"Genre", 0, false},
                                                 {"Time", 50, true},
                                                 {"Filename", 0, false}}};

constexpr std::size_t kRowsInBlock = 256;
constexpr std::size_t kMostColumns = 16;

/// Cells of a packed row: each is its length, seven bits a byte with the lowest first and the top bit for
/// "more follows", and its bytes. Empty cells at the end of a row are left out.
void PackCell(std::string& packed, std::string_view cell) {
  cell = cell.substr(0, track_table::kLongestCell);
  std::size_t length = cell.size();
  while (length >= 0x80) {
    packed.push_back(static_cast<char>((length & 0x7F) | 0x80));
    length >>= 7;
  }
  packed.push_back(static_cast<char>(length));
  packed.append(cell);
}

/// Takes the first cell off a packed row; an empty one when there is none.
std::string_view UnpackCell(std::string_view& packed) {
  std::size_t length = 0;
  int shift = 0;
  std::size_t used = 0;
  while (used < packed.size()) {
    const auto byte = static_cast<unsigned char>(packed[used++]);
    length |= static_cast<std::size_t>(byte & 0x7F) << shift;
    if ((byte & 0x80) == 0) break;
    shift += 7;
  }
  const std::string_view cell = packed.substr(used, length);
  packed.remove_prefix(used + length);
  return cell;
}

void PackRow(std::string& packed, std::span<const std::string_view> cells) {
  while (!cells.empty() && cells.back().empty()) cells = cells.first(cells.size() - 1);
  for (const std::string_view cell : cells) PackCell(packed, cell);
}

/// Whether there is a character below the blank or a backslash; eight at a time.
bool HoldsControlOrBackslash(std::string_view text) {
  constexpr std::uint64_t kOnes = 0x0101010101010101, kTops = kOnes * 0x80;
  const auto found_in = [](std::uint64_t word) {
    const std::uint64_t backslash = word ^ (kOnes * '\\');
    return (((word - kOnes * ' ') & ~word) | ((backslash - kOnes) & ~backslash)) & kTops;
  };
  std::uint64_t found = 0;
  std::uint64_t word = 0;
  for (; text.size() >= sizeof word; text.remove_prefix(sizeof word)) {
    std::memcpy(&word, text.data(), sizeof word);
    found |= found_in(word);
  }
  word = kOnes * ' ';
  std::memcpy(&word, text.data(), text.size());
  return (found | found_in(word)) != 0;
}

/// A cell whose length takes one byte. Rows of such cells are packed and written quickly: a tab and a length
/// take the same place.
constexpr std::size_t kShortCell = 0x80;

/// Packs cells that stand in one text at once; false and nothing done where one is not short.
bool PackShortCells(std::string& packed, std::string_view text, std::span<const std::uint32_t> tabs) {
  const std::size_t start = packed.size();
  text = text.substr(0, text.find_last_not_of('\t') + 1);
  if (text.empty()) return true;
  packed += '\0';
  packed += text;
  std::size_t end = text.size();
  std::size_t longest = 0;
  for (std::size_t i = tabs.size(); i-- > 0;) {
    const std::size_t tab = tabs[i];
    if (tab >= text.size()) continue;
    longest = std::max(longest, end - tab - 1);
    packed[start + 1 + tab] = static_cast<char>(end - tab - 1);
    end = tab;
  }
  packed[start] = static_cast<char>(end);
  if (std::max(longest, end) < kShortCell) return true;
  packed.resize(start);
  return false;
}

/// Appends a packed row's cells with tabs between them, and takes those off the tabs that are missing; false
/// where one is not short or holds what a plain one must not.
bool AppendShortCells(std::string& text, std::string_view packed, std::size_t& missing) {
  const std::size_t start = text.size();
  const auto length_at = [packed](std::size_t at) { return static_cast<unsigned char>(packed[at]); };
  std::array<std::size_t, kMostColumns> tabs;
  std::size_t count = 0;
  text += packed.substr(1);
  std::size_t length = length_at(0);
  for (std::size_t at = 1 + length; at < packed.size() && length < kShortCell; at += 1 + length) {
    length = length_at(at);
    tabs[count++] = start + at - 1;
    text[start + at - 1] = ' ';
  }
  if (length >= kShortCell || HoldsControlOrBackslash(std::string_view(text).substr(start))) return false;
  for (std::size_t i = 0; i < count; ++i) text[tabs[i]] = '\t';
  missing -= count;
  return true;
}

}  // namespace

struct track_table::Block {
  std::string bytes;
  std::vector<std::uint32_t> starts;  ///< of each row in bytes

  [[nodiscard]] std::string_view Row(std::size_t row) const {
    const std::size_t end = row + 1 < starts.size() ? starts[row + 1] : bytes.size();
    return std::string_view(bytes).substr(starts[row], end - starts[row]);
  }
  void Replace(std::size_t row, std::string_view packed) {
    const std::size_t old_size = Row(row).size();
    bytes.replace(starts[row], old_size, packed);
    for (std::size_t i = row + 1; i < starts.size(); ++i) {
      starts[i] = static_cast<std::uint32_t>(starts[i] - old_size + packed.size());
    }
  }
};

std::span<const Column> TrackColumns() {
  return kTrackColumns;
}

std::span<const Column> KaraokeColumns() {
  return kKaraokeColumns;
}

track_table::track_table(std::span<const Column> columns) : columns_(columns) {
  assert(!columns.empty() && columns.size() <= kMostColumns && "a table has one to sixteen columns");
}
track_table::~track_table() = default;
track_table::track_table(track_table&& other) noexcept = default;
track_table& track_table::operator=(track_table&& other) noexcept = default;

track_table::track_table(const track_table& other) : columns_(other.columns_) {
  for (const Slot& slot : other.slots_) slot.shared = true;
  slots_ = other.slots_;
}

track_table& track_table::operator=(const track_table& other) {
  if (this != &other) *this = track_table(other);
  return *this;
}

int track_table::Rows() const {
  if (slots_.empty()) return 0;
  return slots_.back().rows_before + static_cast<int>(slots_.back().block->starts.size());
}

std::string_view track_table::Cell(int row, int column) const {
  if (!Has(row, column)) return {};
  const Place place = Find(row);
  std::string_view packed = slots_[place.slot].block->Row(place.row);
  for (int before = 1; before < column; ++before) UnpackCell(packed);
  return UnpackCell(packed);
}

void track_table::Cells(int row, std::span<std::string_view> cells) const {
  std::string_view packed = Packed(row);
  for (std::string_view& cell : cells) cell = UnpackCell(packed);
}

int track_table::FindRow(int column, std::string_view text) const {
  for (int row = 1; row <= Rows(); ++row) {
    if (Has(row, column) && Cell(row, column) == text) return row;
  }
  return 0;
}

void track_table::SetCell(int row, int column, std::string_view text) {
  if (!Has(row, column)) return;
  const Place place = Find(row);
  std::vector<std::string_view> cells(columns_.size());
  Cells(row, cells);
  cells[static_cast<std::size_t>(column - 1)] = text;
  std::string changed;
  PackRow(changed, cells);
  Writable(place.slot).Replace(place.row, changed);
}

int track_table::AddRow() {
  return AddRow({});
}

int track_table::AddRow(std::span<const std::string_view> cells) {
  std::string packed;
  PackRow(packed, cells.first(std::min(cells.size(), columns_.size())));
  Block& block = BlockForOneMore();
  block.starts.push_back(static_cast<std::uint32_t>(block.bytes.size()));
  block.bytes += packed;
  return Rows();
}

std::size_t track_table::AddTabbedRow(std::string_view text) {
  std::array<std::uint32_t, kMostColumns> tabs;
  std::size_t count = 0;
  for (std::size_t tab = text.find('\t'); tab != std::string_view::npos; tab = text.find('\t', tab + 1)) {
    if (count + 1 == columns_.size()) return columns_.size() + 1;
    tabs[count++] = static_cast<std::uint32_t>(tab);
  }
  if (count + 1 < columns_.size()) return count + 1;
  Block& block = BlockForOneMore();
  const auto start = static_cast<std::uint32_t>(block.bytes.size());
  if (PackShortCells(block.bytes, text, std::span(tabs).first(count))) {
    block.starts.push_back(start);
  } else {
    AddRow(support::Split(text, '\t'));
  }
  return columns_.size();
}

bool track_table::AppendPlainRow(int row, std::string& text) const {
  const std::string_view packed = Packed(row);
  const std::size_t start = text.size();
  std::size_t missing = columns_.size() - 1;
  if (!packed.empty() && !AppendShortCells(text, packed, missing)) {
    text.resize(start);
    return false;
  }
  text.append(missing, '\t');
  return true;
}

int track_table::AppendFrom(const track_table& other, int row) {
  std::vector<std::string_view> cells(columns_.size());
  other.Cells(row, cells);
  return AddRow(cells);
}

void track_table::AppendAll(track_table&& other) {
  const int rows = Rows();
  for (Slot& slot : other.slots_) {
    slot.rows_before += rows;
    slots_.push_back(std::move(slot));
  }
  other.slots_.clear();
}

void track_table::RemoveRow(int row) {
  if (!Has(row, 1)) return;
  const Place place = Find(row);
  Block& block = Writable(place.slot);
  block.Replace(place.row, {});
  block.starts.erase(block.starts.begin() + static_cast<std::ptrdiff_t>(place.row));
  for (std::size_t i = place.slot + 1; i < slots_.size(); ++i) --slots_[i].rows_before;
  if (block.starts.empty()) slots_.erase(slots_.begin() + static_cast<std::ptrdiff_t>(place.slot));
}

void track_table::Clear() {
  slots_.clear();
}

bool track_table::Has(int row, int column) const {
  return row >= 1 && row <= Rows() && column >= 1 && column <= static_cast<int>(columns_.size());
}

std::string_view track_table::Packed(int row) const {
  if (!Has(row, 1)) return {};
  const Place place = Find(row);
  return slots_[place.slot].block->Row(place.row);
}

track_table::Place track_table::Find(int row) const {
  const auto after = std::partition_point(slots_.begin(), slots_.end(),
                                          [row](const Slot& slot) { return slot.rows_before < row; });
  const auto slot = after - 1;
  return {static_cast<std::size_t>(slot - slots_.begin()),
          static_cast<std::size_t>(row - 1 - slot->rows_before)};
}

track_table::Block& track_table::Writable(std::size_t slot) {
  Slot& wanted = slots_[slot];
  if (wanted.shared) {
    wanted.block = std::make_shared<Block>(*wanted.block);
    wanted.shared = false;
  }
  return *wanted.block;
}

track_table::Block& track_table::BlockForOneMore() {
  if (!slots_.empty() && slots_.back().block->starts.size() < kRowsInBlock)
    return Writable(slots_.size() - 1);
  const int rows = Rows();
  std::size_t expected = 0;
  if (!slots_.empty()) {
    std::string& full = slots_.back().block->bytes;
    expected = full.size() + full.size() / 32;
    if (!slots_.back().shared && full.capacity() - full.size() > full.size() / 16) full.shrink_to_fit();
  }
  slots_.push_back({std::make_shared<Block>(), rows, false});
  slots_.back().block->bytes.reserve(expected);
  slots_.back().block->starts.reserve(kRowsInBlock);
  return *slots_.back().block;
}

}  // namespace catalogue
