// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/track_table.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <iterator>
#include <string>
#include <unordered_set>
#include <utility>

#include "catalogue/RowText.h"

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

}  // namespace

struct track_table::Block {
  std::string rows;
  std::vector<std::uint32_t> starts;  ///< of each row in them

  [[nodiscard]] std::string_view Row(std::size_t row) const {
    const std::size_t end = row + 1 < starts.size() ? starts[row + 1] : rows.size();
    return std::string_view(rows).substr(starts[row], end - starts[row]);
  }
  void Replace(std::size_t row, std::string_view changed) {
    const std::size_t old_size = Row(row).size();
    rows.replace(starts[row], old_size, changed);
    for (std::size_t i = row + 1; i < starts.size(); ++i) {
      starts[i] = static_cast<std::uint32_t>(starts[i] - old_size + changed.size());
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
  RowReader cells(Row(row));
  for (int before = 1; before < column; ++before) cells.Next();
  return cells.Next();
}

void track_table::Cells(int row, std::span<std::string_view> cells) const {
  RowReader reader(Row(row));
  for (std::string_view& cell : cells) cell = reader.Next();
}

void track_table::VisitColumn(int column,
                              const std::function<bool(int row, std::string_view cell)>& visit) const {
  if (!Has(1, column)) return;
  for (const Slot& slot : slots_) {
    for (std::size_t i = 0; i < slot.block->starts.size(); ++i) {
      RowReader cells(slot.block->Row(i));
      for (int before = 1; before < column; ++before) cells.Next();
      if (!visit(slot.rows_before + 1 + static_cast<int>(i), cells.Next())) return;
    }
  }
}

int track_table::FindRow(int column, std::string_view text) const {
  int found = 0;
  VisitColumn(column, [&](int row, std::string_view cell) {
    if (cell == text) found = row;
    return found == 0;
  });
  return found;
}

void track_table::SetCell(int row, int column, std::string_view text) {
  if (!Has(row, column)) return;
  std::vector<std::string_view> cells(columns_.size());
  Cells(row, cells);
  cells[static_cast<std::size_t>(column - 1)] = text;
  PutRow(row, cells);
}

void track_table::ReplaceRow(int row, const track_table& other, int other_row) {
  if (!Has(row, 1)) return;
  std::vector<std::string_view> cells(columns_.size());
  other.Cells(other_row, cells);
  PutRow(row, cells);
}

void track_table::PutRow(int row, std::span<const std::string_view> cells) {
  std::string changed;
  AppendRow(changed, cells, columns_.size());
  const Place place = Find(row);
  Writable(place.slot).Replace(place.row, changed);
}

int track_table::AddRow() {
  return AddRow({});
}

int track_table::AddRow(std::span<const std::string_view> cells) {
  std::string row;
  AppendRow(row, cells, columns_.size());
  Block& block = BlockFor(1, row.size());
  block.starts.push_back(static_cast<std::uint32_t>(block.rows.size()));
  block.rows += row;
  return Rows();
}

std::size_t track_table::AddLines(std::string_view text) {
  std::size_t taken = 0;
  std::array<std::uint32_t, kRowsInBlock> starts;
  for (std::size_t count = kRowsInBlock; count == kRowsInBlock;) {
    const std::string_view rest = text.substr(taken);
    std::size_t size = 0;
    count = 0;
    while (count < kRowsInBlock) {
      const std::size_t line = LineSize(rest.substr(size), columns_.size());
      if (line == 0) break;
      starts[count++] = static_cast<std::uint32_t>(size);
      size += line;
    }
    if (count == 0) break;
    Block& block = BlockFor(count, size);
    const auto before = static_cast<std::uint32_t>(block.rows.size());
    for (std::size_t i = 0; i < count; ++i) block.starts.push_back(before + starts[i]);
    block.rows += rest.substr(0, size);
    taken += size;
  }
  return taken;
}

track_table::Lines track_table::LinesFrom(int row) const {
  if (!Has(row, 1)) return {};
  const Place place = Find(row);
  const Block& block = *slots_[place.slot].block;
  std::size_t end = place.row;
  std::size_t size = 0;
  for (; end < block.starts.size() && IsLine(block.Row(end)); ++end) size += block.Row(end).size();
  return {std::string_view(block.rows).substr(block.starts[place.row], size),
          static_cast<int>(end - place.row)};
}

int track_table::AppendFrom(const track_table& other, int row) {
  std::vector<std::string_view> cells(columns_.size());
  other.Cells(row, cells);
  return AddRow(cells);
}

void track_table::InsertFrom(int before, const track_table& other, int row) {
  if (!Has(before, 1)) {
    AppendFrom(other, row);
    return;
  }
  std::vector<std::string_view> cells(columns_.size());
  other.Cells(row, cells);
  std::string inserted;
  AppendRow(inserted, cells, columns_.size());
  Place place = Find(before);
  if (slots_[place.slot].block->starts.size() >= 2 * kRowsInBlock) {
    Cut(place.slot, kRowsInBlock);
    place = Find(before);
  }
  Block& block = Writable(place.slot);
  block.rows.insert(block.starts[place.row], inserted);
  const auto first = block.starts.begin() + static_cast<std::ptrdiff_t>(place.row);
  for (auto start = block.starts.insert(first, *first) + 1; start != block.starts.end(); ++start) {
    *start += static_cast<std::uint32_t>(inserted.size());
  }
  for (std::size_t i = place.slot + 1; i < slots_.size(); ++i) ++slots_[i].rows_before;
}

void track_table::InsertAll(int before, track_table&& other) {
  if (!Has(before, 1)) return AppendAll(std::move(other));
  Place place = Find(before);
  if (place.row > 0) Cut(place.slot++, place.row);
  slots_.insert(slots_.begin() + static_cast<std::ptrdiff_t>(place.slot),
                std::make_move_iterator(other.slots_.begin()), std::make_move_iterator(other.slots_.end()));
  other.slots_.clear();
  CountRows();
}

void track_table::Cut(std::size_t slot, std::size_t rows_in_first) {
  Block& first = Writable(slot);
  const std::uint32_t cut = first.starts[rows_in_first];
  auto second = std::make_shared<Block>();
  second->rows = first.rows.substr(cut);
  for (std::size_t i = rows_in_first; i < first.starts.size(); ++i) {
    second->starts.push_back(first.starts[i] - cut);
  }
  first.rows.resize(cut);
  first.starts.resize(rows_in_first);
  const int before = slots_[slot].rows_before + static_cast<int>(rows_in_first);
  slots_.insert(slots_.begin() + static_cast<std::ptrdiff_t>(slot) + 1, {std::move(second), before, false});
}

void track_table::CountRows() {
  int before = 0;
  for (Slot& slot : slots_) {
    slot.rows_before = before;
    before += static_cast<int>(slot.block->starts.size());
  }
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

void track_table::RemoveRows(std::span<const int> rows) {
  auto gone = rows.begin();
  for (Slot& slot : slots_) {
    const Block& old = *slot.block;
    const int first = slot.rows_before + 1;
    const int last = slot.rows_before + static_cast<int>(old.starts.size());
    if (gone == rows.end() || *gone > last) continue;
    auto rest = std::make_shared<Block>();
    for (int row = first; row <= last; ++row) {
      if (gone != rows.end() && *gone == row) {
        ++gone;
        continue;
      }
      rest->starts.push_back(static_cast<std::uint32_t>(rest->rows.size()));
      rest->rows += old.Row(static_cast<std::size_t>(row - first));
    }
    slot.block = std::move(rest);
    slot.shared = false;
  }
  std::erase_if(slots_, [](const Slot& slot) { return slot.block->starts.empty(); });
  CountRows();
}

void track_table::Clear() {
  slots_.clear();
}

std::vector<int> track_table::RowsNotSharedWith(const track_table& other) const {
  std::unordered_set<const Block*> shared;
  for (const Slot& slot : other.slots_) shared.insert(slot.block.get());
  std::vector<int> rows;
  for (const Slot& slot : slots_) {
    if (shared.contains(slot.block.get())) continue;
    const int count = static_cast<int>(slot.block->starts.size());
    for (int row = 1; row <= count; ++row) rows.push_back(slot.rows_before + row);
  }
  return rows;
}

std::vector<track_table::Stretch> track_table::Stretches() const {
  std::vector<Stretch> stretches;
  stretches.reserve(slots_.size());
  for (const Slot& slot : slots_) {
    stretches.push_back(
        {slot.block.get(), slot.rows_before + 1, static_cast<int>(slot.block->starts.size())});
  }
  return stretches;
}

bool track_table::IsCopyOf(const track_table& other) const {
  return std::equal(slots_.begin(), slots_.end(), other.slots_.begin(), other.slots_.end(),
                    [](const Slot& ours, const Slot& theirs) { return ours.block == theirs.block; });
}

bool track_table::Has(int row, int column) const {
  return row >= 1 && row <= Rows() && column >= 1 && column <= static_cast<int>(columns_.size());
}

std::string_view track_table::Row(int row) const {
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

track_table::Block& track_table::BlockFor(std::size_t rows, std::size_t bytes) {
  if (!slots_.empty() && slots_.back().block->starts.size() + rows <= kRowsInBlock)
    return Writable(slots_.size() - 1);
  const int before = Rows();
  std::size_t expected = bytes;
  if (!slots_.empty()) {
    std::string& full = slots_.back().block->rows;
    if (rows == 1) expected = full.size() + full.size() / 32;
    if (!slots_.back().shared && full.capacity() - full.size() > full.size() / 16) full.shrink_to_fit();
  }
  slots_.push_back({std::make_shared<Block>(), before, false});
  slots_.back().block->rows.reserve(expected);
  slots_.back().block->starts.reserve(kRowsInBlock);
  return *slots_.back().block;
}

}  // namespace catalogue
