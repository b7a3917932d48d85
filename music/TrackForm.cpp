// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/TrackForm.h"

#include <cmath>

namespace music {

const char* NameOf(SectionKind kind) {
  static constexpr const char* kNames[kSectionKinds] = {"intro", "build", "drop", "break",
                                                        "verse", "outro", "other"};
  return kNames[static_cast<int>(kind)];
}

int FirstBarBeat(const BeatGrid& grid, Seconds bar) {
  const double beat = std::round(grid.BeatAt(bar));
  return static_cast<int>(beat - kBeatsPerBar * std::floor(beat / kBeatsPerBar));
}

std::vector<Seconds> DownbeatsOf(const BeatGrid& grid, Seconds bar) {
  std::vector<Seconds> downbeats;
  const std::vector<Seconds>& beats = grid.Beats();
  for (auto beat = static_cast<std::size_t>(FirstBarBeat(grid, bar)); beat < beats.size();
       beat += kBeatsPerBar) {
    downbeats.push_back(beats[beat]);
  }
  return downbeats;
}

}  // namespace music
