// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/sound/DeckView.h"

namespace app {

struct WorkstationView;

/// Where a track begins in a recording.
struct RecordedTrack {
  std::chrono::microseconds place{0};
  std::string artist;
  std::string title;
  std::string file;                          ///< native path of what it was recorded to
  std::chrono::microseconds file_begins{0};  ///< where in the recording
};

/// Finds where the hall goes over to another track: where the one that comes is half of the mix, else where
/// it starts. Threads: the conductor.
class LeadingTrack {
 public:
  /// The deck whose track leads from now on, where that is another one than before.
  [[nodiscard]] std::optional<DeckView> Look(const WorkstationView& view);
  /// Something led at the last look.
  [[nodiscard]] bool Sounding() const { return sounding_; }

 private:
  struct Leader {
    std::size_t deck = 0;
    std::string file;
  };
  Leader leader_;
  bool sounding_ = false;
};

/// "Artist - Title"; the file's name where it has neither.
[[nodiscard]] std::string NameOf(const RecordedTrack& track);
/// The cue sheet of their files, which lie beside it.
[[nodiscard]] std::string CueSheet(const std::string& title, const std::string& date,
                                   const std::vector<RecordedTrack>& tracks);
/// What such a cue sheet tells, each place in its file; the files have the names that stand there. A line
/// that it has not is passed over.
[[nodiscard]] std::vector<RecordedTrack> TracksOfCueSheet(std::string_view sheet);
/// A line a track: when it began, and its name.
[[nodiscard]] std::string TrackList(const std::vector<RecordedTrack>& tracks);

}  // namespace app
