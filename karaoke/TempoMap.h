// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "karaoke/MidiFile.h"

namespace karaoke {

using Microseconds = std::chrono::microseconds;

/// When each tick of a song is due, by all tempo changes of all tracks.
///
/// Law: times are whole numbers of (microseconds times division) inside, so nothing adds up over a song.
class TempoMap {
 public:
  struct Change {
    std::int64_t tick = 0;
    std::int64_t tempo = 500'000;  ///< microseconds a quarter note; 0 and below are ignored
  };

  /// Changes in any order; of several at one tick the last counts. 120 beats a minute before the first.
  /// division: as in the file's header; nothing when it is 0 or has no ticks a frame.
  [[nodiscard]] static std::optional<TempoMap> Make(int division, std::vector<Change> changes);

  [[nodiscard]] Microseconds TimeOf(std::int64_t tick) const;
  /// The last tick that is due at or before that time. Requires: time >= 0.
  [[nodiscard]] std::int64_t TickAt(Microseconds time) const;
  /// Length of a quarter note at that time; 500 ms where ticks do not depend on tempo.
  [[nodiscard]] Microseconds QuarterAt(Microseconds time) const;
  /// 0 where ticks do not depend on tempo.
  [[nodiscard]] std::int64_t TicksAQuarter() const { return smpte_ ? 0 : division_; }

 private:
  struct Segment {
    std::int64_t tick = 0;
    std::int64_t scaled = 0;  ///< microseconds times division at its start
    std::int64_t tempo = 500'000;
  };
  [[nodiscard]] const Segment& SegmentAt(std::int64_t scaled) const;

  std::int64_t division_ = 480;
  bool smpte_ = false;
  std::vector<Segment> segments_;
};

/// A time signature, from its tick on.
struct Metre {
  std::int64_t tick = 0;
  int beats = 4;  ///< in a bar, of the note that the unit names
  int unit = 4;   ///< 4 is a quarter note
};

/// The file's tracks on one line of ticks: where each begins, where the song ends, and its tempo map.
struct SongTimes {
  std::vector<std::int64_t> track_starts;  ///< all 0 but in files of format 2
  std::int64_t end = 0;                    ///< an end event counts at most ten seconds of silence
  TempoMap tempo;
  std::vector<Metre> metres;  ///< in the order of time
};
/// Nothing when the file's division says nothing.
[[nodiscard]] std::optional<SongTimes> ReadSongTimes(const MidiFile& file);

}  // namespace karaoke
