// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/SongBeats.h"

#include <algorithm>
#include <limits>

namespace karaoke {
namespace {

constexpr std::size_t kMostBeats = 100'000;  // a damaged file's length shall not fill the memory

std::int64_t TicksABeat(const Metre& metre, std::int64_t quarter) {
  const bool threes = metre.unit == 8 && metre.beats > 0 && metre.beats % 3 == 0;
  return threes ? std::max<std::int64_t>(quarter * 3 / 2, 1) : quarter;
}

}  // namespace

music::BeatGrid BeatsOf(const Song& song) {
  const std::int64_t quarter = song.tempo_map ? song.tempo_map->TicksAQuarter() : 0;
  if (quarter == 0) return {};
  std::vector<Metre> metres = song.metres;
  if (metres.empty() || metres.front().tick > 0) metres.insert(metres.begin(), Metre{});
  std::vector<music::Seconds> beats;
  for (std::size_t i = 0; i < metres.size(); ++i) {
    const bool last = i + 1 == metres.size();
    const std::int64_t until = last ? std::numeric_limits<std::int64_t>::max() : metres[i + 1].tick;
    const std::int64_t step = TicksABeat(metres[i], quarter);
    for (std::int64_t tick = metres[i].tick; tick < until && beats.size() < kMostBeats; tick += step) {
      const Microseconds at = song.tempo_map->TimeOf(tick);
      if (at > song.length) break;
      beats.emplace_back(at);
    }
  }
  return {support::Bpm{0}, 1, std::move(beats)};
}

}  // namespace karaoke
