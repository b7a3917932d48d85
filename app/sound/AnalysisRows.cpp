// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/AnalysisRows.h"

#include <array>
#include <string>

#include "support/Text.h"

namespace app {
namespace {

namespace track = catalogue::track;

struct Found {
  int column;
  std::string text;  ///< empty: not found
};

std::array<Found, 4> CellsOf(const music::TrackAnalysis& analysis) {
  std::array<Found, 4> cells{
      {{track::kGain, ""}, {track::kStartMixPoint, ""}, {track::kEndMixPoint, ""}, {track::kBpm, ""}}};
  if (analysis.loudness.valid) {
    cells[0].text = support::FormatReal(static_cast<double>(music::GainFor(analysis.loudness).value), 2);
  }
  if (analysis.mix_points) {
    cells[1].text = support::FormatReal(analysis.mix_points->points.start_seconds, 3);
    cells[2].text = support::FormatReal(analysis.mix_points->points.end_seconds, 3);
  }
  if (analysis.grid != nullptr && !analysis.grid->Empty()) {
    cells[3].text = support::FormatReal(analysis.grid->Nominal().value, 2);
  }
  return cells;
}

bool WasFound(int column, const catalogue::FileMarks& marks) {
  using catalogue::PointBy;
  return (column == track::kStartMixPoint && marks.start == PointBy::Scan) ||
         (column == track::kEndMixPoint && marks.end == PointBy::Scan);
}

}  // namespace

bool FillIn(catalogue::track_table& table, int row, const music::TrackAnalysis& analysis,
            const catalogue::FileMarks& marks) {
  bool filled = false;
  for (const Found& found : CellsOf(analysis)) {
    if (row == 0 || found.text.empty() || table.Cell(row, found.column) == found.text) continue;
    if (!table.Cell(row, found.column).empty() && !WasFound(found.column, marks)) continue;
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
