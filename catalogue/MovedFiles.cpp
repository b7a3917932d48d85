// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/MovedFiles.h"

#include <array>
#include <span>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace catalogue {
namespace {

// What a tag tells, and the column of the path.
constexpr std::array kTrackTold{track::kArtist, track::kTitle, track::kTime,    track::kGenre,
                                track::kAlbum,  track::kYear,  track::kBitrate, track::kFreq};
constexpr std::array kKaraokeTold{karaoke::kArtist, karaoke::kTitle, karaoke::kGenre, karaoke::kTime};
constexpr std::array kMixing{track::kBpm, track::kGain, track::kStartMixPoint, track::kEndMixPoint};

bool IsMusic(const track_table& table) {
  return table.Columns().size() == TrackColumns().size();
}

int PathColumn(const track_table& table) {
  return IsMusic(table) ? track::kFilename : karaoke::kFilename;
}

/// The name of the file and what its tag tells, as one text.
std::string MarkOf(const track_table& table, int row) {
  const std::string_view path = table.Cell(row, PathColumn(table));
  std::string mark(path.substr(path.find_last_of("/\\") + 1));
  const std::span<const int> told =
      IsMusic(table) ? std::span<const int>(kTrackTold) : std::span<const int>(kKaraokeTold);
  for (const int column : told) {
    mark += '\0';
    mark += table.Cell(row, column);
  }
  return mark;
}

std::unordered_set<std::string_view> PathsOf(const track_table& table) {
  std::unordered_set<std::string_view> paths;
  paths.reserve(static_cast<std::size_t>(table.Rows()));
  for (int row = 1; row <= table.Rows(); ++row) paths.insert(table.Cell(row, PathColumn(table)));
  return paths;
}

/// Rows by their marks, of those whose path is not in the other table; 0 where a mark is there twice.
std::unordered_map<std::string, int> MarksNotIn(const std::unordered_set<std::string_view>& other,
                                                const track_table& table) {
  std::unordered_map<std::string, int> marks;
  for (int row = 1; row <= table.Rows(); ++row) {
    if (other.contains(table.Cell(row, PathColumn(table)))) continue;
    const auto [place, is_new] = marks.try_emplace(MarkOf(table, row), row);
    if (!is_new) place->second = 0;
  }
  return marks;
}

}  // namespace

ScanComparison CompareScans(const track_table& before, const track_table& after) {
  ScanComparison found;
  const auto paths = PathsOf(after);
  std::vector<int> lost;
  for (int row = 1; row <= before.Rows(); ++row) {
    if (!paths.contains(before.Cell(row, PathColumn(before)))) lost.push_back(row);
  }
  if (lost.empty()) return found;
  const auto new_marks = MarksNotIn(PathsOf(before), after);
  const auto old_marks = MarksNotIn(paths, before);
  for (const int row : lost) {
    const std::string mark = MarkOf(before, row);
    const auto place = new_marks.find(mark);
    if (place == new_marks.end() || place->second == 0 || old_marks.at(mark) != row) {
      ++found.gone;
      continue;
    }
    found.moved.push_back({row, place->second, std::string(before.Cell(row, PathColumn(before))),
                           std::string(after.Cell(place->second, PathColumn(after)))});
  }
  return found;
}

void CarryMixing(const ScanComparison& comparison, const track_table& before, track_table& after) {
  if (!IsMusic(after)) return;
  for (const ScanComparison::Moved& file : comparison.moved) {
    for (const int column : kMixing) {
      if (!after.Cell(file.after, column).empty()) continue;
      after.SetCell(file.after, column, before.Cell(file.before, column));
    }
  }
}

}  // namespace catalogue
