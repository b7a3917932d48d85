// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/track_table.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

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

track_table::track_table(std::span<const Column> columns) : columns_(columns) {}
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
  std::string_view packed;
  if (Has(row, 1)) {
    const Place place = Find(row);
    packed = slots_[place.slot].block->Row(place.row);
  }
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

int track_table::AppendFrom(const track_table& other, int row) {
  std::vector<std::string_view> cells(columns_.size());
  other.Cells(row, cells);
  return AddRow(cells);
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
  if (!slots_.empty() && !slots_.back().shared) slots_.back().block->bytes.shrink_to_fit();
  slots_.push_back({std::make_shared<Block>(), rows, false});
  slots_.back().block->starts.reserve(kRowsInBlock);
  return *slots_.back().block;
}

}  // namespace catalogue
