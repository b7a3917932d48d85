// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/track_table.h"

#include <algorithm>
#include <array>

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

}  // namespace

std::span<const Column> TrackColumns() {
  return kTrackColumns;
}

std::span<const Column> KaraokeColumns() {
  return kKaraokeColumns;
}

track_table::track_table(std::span<const Column> columns) : columns_(columns) {}

int track_table::Rows() const {
  return static_cast<int>(rows_.size());
}

std::string_view track_table::Cell(int row, int column) const {
  if (row < 1 || row > Rows() || column < 1 || column > static_cast<int>(columns_.size())) return {};
  return rows_[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(column - 1)];
}

void track_table::SetCell(int row, int column, std::string_view text) {
  if (row < 1 || row > Rows() || column < 1 || column > static_cast<int>(columns_.size())) return;
  rows_[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(column - 1)] = text;
}

int track_table::AddRow() {
  rows_.emplace_back(columns_.size());
  return Rows();
}

int track_table::AddRow(std::span<const std::string_view> cells) {
  const int row = AddRow();
  int column = 1;
  for (const std::string_view cell : cells) SetCell(row, column++, cell);
  return row;
}

int track_table::AppendFrom(const track_table& other, int row) {
  const int added = AddRow();
  for (int column = 1; column <= static_cast<int>(columns_.size()); ++column) {
    SetCell(added, column, other.Cell(row, column));
  }
  return added;
}

void track_table::RemoveRow(int row) {
  if (row >= 1 && row <= Rows()) rows_.erase(rows_.begin() + (row - 1));
}

void track_table::Clear() {
  rows_.clear();
}

}  // namespace catalogue
