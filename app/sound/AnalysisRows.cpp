// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/AnalysisRows.h"

#include <array>
#include <string>

#include "support/Text.h"

namespace app {
namespace {

namespace track = catalogue::track;
using catalogue::PointBy;

struct Found {
  int column;
  std::string text;  ///< empty: not found
  bool by_hand = false;
};

Found ByHand(int column, std::chrono::microseconds place) {
  return {column, support::FormatReal(std::chrono::duration<double>(place).count(), 3), true};
}

std::array<Found, 4> CellsOf(const music::TrackAnalysis& analysis, const catalogue::FileMarks& marks) {
  std::array<Found, 4> cells{
      {{track::kGain, ""}, {track::kStartMixPoint, ""}, {track::kEndMixPoint, ""}, {track::kBpm, ""}}};
  if (analysis.loudness.valid) {
    cells[0].text = support::FormatReal(static_cast<double>(music::GainFor(analysis.loudness).value), 2);
  }
  if (analysis.mix_points) {
    cells[1].text = support::FormatReal(analysis.mix_points->points.start_seconds, 3);
    cells[2].text = support::FormatReal(analysis.mix_points->points.end_seconds, 3);
  }
  const auto& grid = marks.grid != nullptr ? marks.grid : analysis.grid;
  if (grid != nullptr && !grid->Empty()) cells[3].text = support::FormatReal(grid->Nominal().value, 2);
  if (marks.start == PointBy::Hand && marks.start_at)
    cells[1] = ByHand(track::kStartMixPoint, *marks.start_at);
  if (marks.end == PointBy::Hand && marks.end_at) cells[2] = ByHand(track::kEndMixPoint, *marks.end_at);
  return cells;
}

bool WasFound(int column, const catalogue::FileMarks& marks) {
  return (column == track::kStartMixPoint && marks.start == PointBy::Scan) ||
         (column == track::kEndMixPoint && marks.end == PointBy::Scan);
}

}  // namespace

bool FillIn(catalogue::track_table& table, int row, const music::TrackAnalysis& analysis,
            const catalogue::FileMarks& marks) {
  bool filled = false;
  for (const Found& found : CellsOf(analysis, marks)) {
    if (row == 0 || found.text.empty() || table.Cell(row, found.column) == found.text) continue;
    const bool free = table.Cell(row, found.column).empty() || WasFound(found.column, marks);
    if (!free && !found.by_hand) continue;
    table.SetCell(row, found.column, found.text);
    filled = true;
  }
  return filled;
}

catalogue::MixingTags MixingTagsInRow(const catalogue::track_table& table, int row) {
  const auto cell = [&](int column) -> std::optional<std::string> {
    if (row == 0 || table.Cell(row, column).empty()) return std::nullopt;
    return std::string(table.Cell(row, column));
  };
  return {cell(track::kGain), cell(track::kStartMixPoint), cell(track::kEndMixPoint), cell(track::kBpm)};
}

}  // namespace app
