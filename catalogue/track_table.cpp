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

#include "catalogue/FileNumber.h"
#include "catalogue/RowBlock.h"
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

constexpr std::size_t kRowsInBlock = RowBlock::kMostRows;

int FileColumnOf(std::span<const Column> columns) {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].key == "Filename") return static_cast<int>(i) + 1;
  }
  return 0;
}

}  // namespace

std::span<const Column> TrackColumns() {
  return kTrackColumns;
}

std::span<const Column> KaraokeColumns() {
  return kKaraokeColumns;
}

track_table::track_table(std::span<const Column> columns)
    : columns_(columns), file_column_(FileColumnOf(columns)) {
  assert(!columns.empty() && columns.size() <= kMostColumns && "a table has one to sixteen columns");
}
track_table::~track_table() = default;
track_table::track_table(track_table&& other) noexcept = default;
track_table& track_table::operator=(track_table&& other) noexcept = default;

track_table::track_table(const track_table& other)
    : columns_(other.columns_), file_column_(other.file_column_) {
  for (const Slot& slot : other.slots_) slot.shared = true;
  slots_ = other.slots_;
}

track_table& track_table::operator=(const track_table& other) {
  if (this != &other) *this = track_table(other);
  return *this;
}

int track_table::Rows() const {
  if (slots_.empty()) return 0;
  return slots_.back().rows_before + static_cast<int>(slots_.back().block->Rows());
}

std::string_view track_table::Cell(int row, int column) const {
  if (!Has(row, column)) return {};
  return CellOf(Row(row), column);
}

void track_table::Cells(int row, std::span<std::string_view> cells) const {
  RowReader reader(Row(row));
  for (std::string_view& cell : cells) cell = reader.Next();
}

void track_table::VisitColumn(int column,
                              const std::function<bool(int row, std::string_view cell)>& visit) const {
  if (!Has(1, column)) return;
  for (const Slot& slot : slots_) {
    for (std::size_t i = 0; i < slot.block->Rows(); ++i) {
      const std::string_view cell = CellOf(slot.block->Row(i), column);
      if (!visit(slot.rows_before + 1 + static_cast<int>(i), cell)) return;
    }
  }
}

int track_table::FindRow(int column, std::string_view text) const {
  int found = 0;
  if (column == file_column_) {
    VisitRowsOf(text, [&found](int row) {
      found = row;
      return false;
    });
    return found;
  }
  VisitColumn(column, [&](int row, std::string_view cell) {
    if (cell == text) found = row;
    return found == 0;
  });
  return found;
}

template <typename Visit>
void track_table::VisitRowsOf(std::string_view file, const Visit& visit) const {
  const std::uint32_t number = FileNumber(file);
  for (const Slot& slot : slots_) {
    if (!slot.block->MayHold(number)) continue;
    const std::span<const std::uint32_t> names = slot.block->Names();
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (names[i] != number || CellOf(slot.block->Row(i), file_column_) != file) continue;
      if (!visit(slot.rows_before + 1 + static_cast<int>(i))) return;
    }
  }
}

std::vector<int> track_table::RowsOf(std::string_view file) const {
  std::vector<int> rows;
  VisitRowsOf(file, [&rows](int row) {
    rows.push_back(row);
    return true;
  });
  return rows;
}

std::vector<int> track_table::FirstRowsOf(std::span<const std::string> files) const {
  const WantedFiles wanted(files);
  std::vector<int> rows(files.size());
  for (const Slot& slot : slots_) {
    const std::span<const std::uint32_t> names = slot.block->Names();
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (!wanted.MayBe(names[i])) continue;
      const auto alike = wanted.With(names[i]);
      if (alike.empty()) continue;
      const std::string_view file = CellOf(slot.block->Row(i), file_column_);
      for (const auto& [number, which] : alike) {
        if (rows[which] == 0 && files[which] == file)
          rows[which] = slot.rows_before + 1 + static_cast<int>(i);
      }
    }
  }
  return rows;
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
  Writable(place.slot).Replace(place.row, changed, NameOf(changed));
}

int track_table::AddRow() {
  return AddRow({});
}

int track_table::AddRow(std::span<const std::string_view> cells) {
  std::string row;
  AppendRow(row, cells, columns_.size());
  BlockFor(1, row.size()).Add(row, NameOf(row));
  return Rows();
}

std::size_t track_table::AddLines(std::string_view text) {
  std::size_t taken = 0;
  std::array<std::uint32_t, kRowsInBlock> starts, names;
  for (std::size_t count = kRowsInBlock; count == kRowsInBlock;) {
    const std::string_view rest = text.substr(taken);
    std::size_t size = 0;
    count = 0;
    while (count < kRowsInBlock) {
      const Line line = LineOf(rest.substr(size), columns_.size(), static_cast<std::size_t>(file_column_));
      if (line.size == 0) break;
      starts[count] = static_cast<std::uint32_t>(size);
      names[count++] = FileNumber(line.cell);
      size += line.size;
    }
    if (count == 0) break;
    const std::span<const std::uint32_t> begins(starts.data(), count), numbers(names.data(), count);
    BlockFor(count, size).AddAll(rest.substr(0, size), begins, numbers);
    taken += size;
  }
  return taken;
}

track_table::Lines track_table::LinesFrom(int row) const {
  if (!Has(row, 1)) return {};
  const Place place = Find(row);
  const RowBlock::Lines lines = slots_[place.slot].block->LinesFrom(place.row);
  return {lines.text, static_cast<int>(lines.rows)};
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
  if (slots_[place.slot].block->Rows() == kRowsInBlock) {
    Cut(place.slot, kRowsInBlock / 2);
    place = Find(before);
  }
  Writable(place.slot).Insert(place.row, inserted, NameOf(inserted));
  for (std::size_t i = place.slot + 1; i < slots_.size(); ++i) ++slots_[i].rows_before;
}

void track_table::InsertAll(int before, track_table&& other) {
  if (!Has(before, 1)) return AppendAll(std::move(other));
  Place place = Find(before);
  if (place.row > 0) Cut(place.slot++, place.row);
  const int rows = other.Rows();
  for (Slot& slot : other.slots_) slot.rows_before += before - 1;
  for (std::size_t i = place.slot; i < slots_.size(); ++i) slots_[i].rows_before += rows;
  slots_.insert(slots_.begin() + static_cast<std::ptrdiff_t>(place.slot),
                std::make_move_iterator(other.slots_.begin()), std::make_move_iterator(other.slots_.end()));
  other.slots_.clear();
}

void track_table::Cut(std::size_t slot, std::size_t rows_in_first) {
  const std::shared_ptr<const RowBlock> whole = slots_[slot].block;
  const auto first = std::make_shared<RowBlock>(whole), second = std::make_shared<RowBlock>(whole);
  first->Remove(rows_in_first, whole->Rows() - rows_in_first);
  second->Remove(0, rows_in_first);
  const int before = slots_[slot].rows_before;
  slots_[slot] = {first, before, false};
  slots_.insert(slots_.begin() + static_cast<std::ptrdiff_t>(slot) + 1,
                {second, before + static_cast<int>(rows_in_first), false});
}

void track_table::AppendAll(track_table&& other) {
  const int rows = Rows();
  if (other.Rows() < static_cast<int>(kRowsInBlock) / 2) {  // not a block for each file that is added
    AppendRows(other, 1, other.Rows());
    return other.Clear();
  }
  for (Slot& slot : other.slots_) {
    slot.rows_before += rows;
    slots_.push_back(std::move(slot));
  }
  other.slots_.clear();
}

void track_table::AppendRows(const track_table& other, int first, int count) {
  const int end = std::min(first + count, other.Rows() + 1);
  while (first >= 1 && first < end) {
    const Place place = other.Find(first);
    const Slot& from = other.slots_[place.slot];
    const std::size_t there = from.block->Rows() - place.row;
    const std::size_t wanted = std::min(there, static_cast<std::size_t>(end - first));
    first += static_cast<int>(wanted);
    // Small ones are joined, so that rows that are moved about do not end up in a block each.
    if (wanted == from.block->Rows() && wanted >= kRowsInBlock / 2) {
      from.shared = true;
      slots_.push_back({from.block, Rows(), true});
      continue;
    }
    const std::shared_ptr<RowBlock> held = from.block;  // the other table may be this one
    BlockFor(wanted, 0).AddFrom(*held, place.row, wanted);
  }
}

void track_table::RemoveRow(int row) {
  RemoveRows(std::span(&row, 1));
}

void track_table::RemoveRows(std::span<const int> rows) {
  while (!rows.empty() && rows.front() < 1) rows = rows.subspan(1);
  if (rows.empty() || !Has(rows.front(), 1)) return;
  int removed = 0;
  for (std::size_t i = Find(rows.front()).slot; i < slots_.size(); ++i) {
    const int before = std::exchange(slots_[i].rows_before, slots_[i].rows_before - removed);
    if (rows.empty()) continue;
    const int last = before + static_cast<int>(slots_[i].block->Rows());
    const auto here =
        static_cast<std::size_t>(std::upper_bound(rows.begin(), rows.end(), last) - rows.begin());
    if (here > 0) TakeFrom(i, before, rows.first(here));
    removed += static_cast<int>(here);
    rows = rows.subspan(here);
  }
  std::erase_if(slots_, [](const Slot& slot) { return slot.block == nullptr; });
}

void track_table::TakeFrom(std::size_t slot, int before, std::span<const int> rows) {
  if (rows.size() == slots_[slot].block->Rows()) return slots_[slot].block.reset();
  RowBlock& block = Writable(slot);
  for (std::size_t end = rows.size(); end > 0;) {
    std::size_t first = end - 1;
    while (first > 0 && rows[first - 1] + 1 == rows[first]) --first;
    block.Remove(static_cast<std::size_t>(rows[first] - before - 1), end - first);
    end = first;
  }
}

void track_table::Clear() {
  slots_.clear();
}

std::vector<int> track_table::RowsNotSharedWith(const track_table& other) const {
  std::unordered_set<const RowBlock*> shared;
  for (const Slot& slot : other.slots_) shared.insert(slot.block.get());
  std::vector<int> rows;
  for (const Slot& slot : slots_) {
    if (shared.contains(slot.block.get())) continue;
    const int count = static_cast<int>(slot.block->Rows());
    for (int row = 1; row <= count; ++row) rows.push_back(slot.rows_before + row);
  }
  return rows;
}

std::vector<track_table::Stretch> track_table::Stretches() const {
  std::vector<Stretch> stretches;
  stretches.reserve(slots_.size());
  for (const Slot& slot : slots_) {
    stretches.push_back({slot.block.get(), slot.rows_before + 1, static_cast<int>(slot.block->Rows())});
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

std::uint32_t track_table::NameOf(std::string_view row) const {
  return FileNumber(file_column_ == 0 ? std::string_view() : CellOf(row, file_column_));
}

RowBlock& track_table::Writable(std::size_t slot) {
  Slot& wanted = slots_[slot];
  if (wanted.shared) {
    wanted.block = std::make_shared<RowBlock>(std::shared_ptr<const RowBlock>(wanted.block));
    wanted.shared = false;
  }
  return *wanted.block;
}

RowBlock& track_table::BlockFor(std::size_t rows, std::size_t bytes) {
  if (!slots_.empty() && slots_.back().block->Rows() + rows <= kRowsInBlock)
    return Writable(slots_.size() - 1);
  const int before = Rows();
  std::size_t expected = bytes;
  if (!slots_.empty()) {
    RowBlock& full = *slots_.back().block;
    if (rows == 1) expected = full.OwnBytes() + full.OwnBytes() / 32;
    if (!slots_.back().shared) full.Settle();
  }
  slots_.push_back({std::make_shared<RowBlock>(), before, false});
  slots_.back().block->Reserve(expected);
  return *slots_.back().block;
}

}  // namespace catalogue
