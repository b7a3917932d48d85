// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/TempoMap.h"

#include <algorithm>

namespace karaoke {
namespace {

/// The unit is told as a power of two.
Metre MetreAt(std::int64_t tick, std::string_view signature) {
  constexpr int kSmallestUnit = 10;
  return {tick, static_cast<unsigned char>(signature[0]),
          1 << std::min<int>(static_cast<unsigned char>(signature[1]), kSmallestUnit)};
}

}  // namespace

std::optional<TempoMap> TempoMap::Make(int division, std::vector<Change> changes) {
  TempoMap map;
  std::int64_t first_tempo = 500'000;
  map.division_ = division;
  if ((division & 0x8000) != 0) {
    const int frames = 256 - (division >> 8 & 0xFF);
    // 29 frames stand for 30 that take 1.001 seconds.
    first_tempo = frames == 29 ? 1'001'000 : 1'000'000;
    map.division_ = static_cast<std::int64_t>(frames == 29 ? 30 : frames) * (division & 0xFF);
    map.smpte_ = true;
    changes.clear();
  }
  if (map.division_ <= 0) return std::nullopt;
  std::erase_if(changes, [](const Change& change) { return change.tempo <= 0; });
  std::stable_sort(changes.begin(), changes.end(),
                   [](const Change& a, const Change& b) { return a.tick < b.tick; });
  map.segments_.push_back({0, 0, first_tempo});
  for (const Change& change : changes) {
    const Segment& last = map.segments_.back();
    const std::int64_t scaled = last.scaled + (change.tick - last.tick) * last.tempo;
    if (change.tick > last.tick) map.segments_.push_back({change.tick, scaled, change.tempo});
    map.segments_.back().tempo = change.tempo;
  }
  return map;
}

Microseconds TempoMap::TimeOf(std::int64_t tick) const {
  const auto next = std::upper_bound(segments_.begin(), segments_.end(), std::max<std::int64_t>(tick, 0),
                                     [](std::int64_t t, const Segment& segment) { return t < segment.tick; });
  const Segment& segment = *std::prev(next);
  return Microseconds((segment.scaled + (tick - segment.tick) * segment.tempo) / division_);
}

const TempoMap::Segment& TempoMap::SegmentAt(std::int64_t scaled) const {
  const auto next =
      std::upper_bound(segments_.begin(), segments_.end(), scaled,
                       [](std::int64_t s, const Segment& segment) { return s < segment.scaled; });
  return *std::prev(next);
}

std::int64_t TempoMap::TickAt(Microseconds time) const {
  // One microsecond more and a little less: what TimeOf cut off does not lose the tick.
  const std::int64_t scaled = (time.count() + 1) * division_ - 1;
  const Segment& segment = SegmentAt(scaled);
  return segment.tick + (scaled - segment.scaled) / segment.tempo;
}

Microseconds TempoMap::QuarterAt(Microseconds time) const {
  constexpr Microseconds kUsual{500'000};
  return smpte_ ? kUsual : Microseconds(SegmentAt(time.count() * division_).tempo);
}

std::optional<SongTimes> ReadSongTimes(const MidiFile& file) {
  constexpr Microseconds kLongestSilence = std::chrono::seconds(10);
  constexpr std::size_t kMostChanges = 1'000'000;  // a file of nothing else shall not fill the memory
  SongTimes times;
  std::vector<TempoMap::Change> changes;
  std::int64_t start = 0;
  std::int64_t last_sound = 0;
  for (const std::string_view track : file.tracks) {
    times.track_starts.push_back(start);
    std::int64_t end = start;
    TrackReader reader(track);
    while (const auto event = reader.Next()) {
      end = std::min(start + event->tick, TrackReader::kLastTick);
      if (!event->IsMeta(0x2F)) last_sound = std::max(last_sound, end);
      if (event->IsMeta(0x58) && event->text.size() >= 2 && times.metres.size() < kMostChanges) {
        times.metres.push_back(MetreAt(end, event->text));
      }
      if (event->IsMeta(0x51) && event->text.size() >= 3 && changes.size() < kMostChanges) {
        changes.push_back({end, static_cast<std::int64_t>(*BigEndianAt(event->text, 0, 3))});
      }
    }
    times.end = std::max(times.end, end);
    if (file.format == 2) start = end;
  }
  std::stable_sort(times.metres.begin(), times.metres.end(),
                   [](const Metre& a, const Metre& b) { return a.tick < b.tick; });
  auto tempo = TempoMap::Make(file.division, std::move(changes));
  if (!tempo) return std::nullopt;
  times.tempo = *std::move(tempo);
  const Microseconds latest = times.tempo.TimeOf(last_sound) + kLongestSilence;
  if (times.tempo.TimeOf(times.end) > latest) times.end = times.tempo.TickAt(latest);
  return times;
}

}  // namespace karaoke
