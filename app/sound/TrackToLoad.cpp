// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/TrackToLoad.h"

#include <cmath>

#include "support/Text.h"

namespace app {
namespace {

namespace track = catalogue::track;

/// Of a cell that holds seconds; nothing where it holds none.
std::optional<std::chrono::microseconds> TimeIn(std::string_view cell) {
  constexpr double kLongest = 1e6;
  const auto seconds = support::ParseReal(cell);
  if (!seconds || !(*seconds >= 0 && *seconds <= kLongest)) return std::nullopt;
  return std::chrono::microseconds(std::llround(*seconds * 1e6));
}

}  // namespace

std::optional<Track> TrackToLoad(const catalogue::track_table& table, int row) {
  Track wanted;
  wanted.filename = table.Cell(row, track::kFilename);
  if (wanted.filename.empty()) return std::nullopt;
  wanted.artist = table.Cell(row, track::kArtist);
  wanted.title = table.Cell(row, track::kTitle);
  wanted.bpm = support::ParseReal(table.Cell(row, track::kBpm)).value_or(0);
  wanted.marks = {TimeIn(table.Cell(row, track::kStartMixPoint)),
                  TimeIn(table.Cell(row, track::kEndMixPoint))};
  return wanted;
}

}  // namespace app
