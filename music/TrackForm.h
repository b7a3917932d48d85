// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <vector>

#include "music/BeatGrid.h"
#include "music/MusicalKey.h"

namespace music {

enum class SectionKind { Intro, Build, Drop, Break, Verse, Outro, Other };
inline constexpr int kSectionKinds = 7;
/// "intro", "build", ...
[[nodiscard]] const char* NameOf(SectionKind kind);

/// A part of a track; the next one begins where it ends.
struct Section {
  Seconds start{0};
  Seconds end{0};
  SectionKind kind = SectionKind::Other;
  bool operator==(const Section&) const = default;
};

inline constexpr int kBeatsPerBar = 4;

/// The key of a track, where its bars begin, and of which parts it is made. What is not sure enough is not
/// there.
struct TrackForm {
  std::optional<MusicalKey> key;
  double key_confidence = 0;      ///< 0 to 1; 0 without a key
  std::optional<Seconds> bar;     ///< one of the beats that begin a bar; the others are four apart
  double bar_confidence = 0;      ///< 0 to 1; 0 without bars
  std::vector<Section> sections;  ///< from 0 to the track's end; none, or at least two
  bool operator==(const TrackForm&) const = default;
};

/// The number, 0 to 3, of the first beat of the grid that begins a bar: beat n begins one where n less this
/// is a multiple of four.
[[nodiscard]] int FirstBarBeat(const BeatGrid& grid, Seconds bar);
/// The beats that begin a bar; none of an empty grid.
[[nodiscard]] std::vector<Seconds> DownbeatsOf(const BeatGrid& grid, Seconds bar);

}  // namespace music
