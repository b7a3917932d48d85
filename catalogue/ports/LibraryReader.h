// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "support/Result.h"

namespace catalogue {

/// Another program's mark in a track.
struct ForeignCue {
  enum class Kind { Cue, Loop, FadeIn, FadeOut, Load };
  Kind kind = Kind::Cue;
  double start = 0;  ///< seconds
  double end = 0;    ///< the same, behind the start; only of a loop
  int number = -1;   ///< of the pad, from 0; -1: it lies on none
  std::string name;
  std::string colour;  ///< "#rrggbb" or empty
  bool operator==(const ForeignCue&) const = default;
};

/// From here on the beats are even.
struct ForeignTempo {
  double start = 0;  ///< seconds; a beat lies here
  double bpm = 0;
  int beat = 1;  ///< of the bar, from 1
  bool operator==(const ForeignTempo&) const = default;
};

struct ForeignTrack {
  std::string path;  ///< with "/", as on the system that it came from
  std::string artist, title;
  std::string key;
  double bpm = 0;         ///< 0: not told
  int rating = 0;         ///< 0 to 5
  double length = 0;      ///< seconds; 0: not told
  std::int64_t size = 0;  ///< bytes; 0: not told
  std::vector<ForeignCue> cues;
  std::vector<ForeignTempo> grid;
};

struct ForeignList {
  std::string name;                   ///< behind those of its folders, joined by "/"
  std::vector<std::uint32_t> tracks;  ///< places in the library's tracks
};

enum class LibraryKind { Rekordbox, Traktor, Serato, Itunes, M3u };

/// What another program knows about music. Positions are those of the file, as it tells them.
struct ForeignLibrary {
  LibraryKind kind = LibraryKind::M3u;
  std::vector<ForeignTrack> tracks;
  std::vector<ForeignList> lists;
  std::vector<support::Saying> notes;  ///< what was left out, and where the file ends early
};

/// For those who look on from another thread.
struct LibraryWatch {
  std::atomic<bool> stop{false};
  std::atomic<int> tracks{0};  ///< read so far
};

/// Reads the libraries of other programs.
///
/// Law: the file stays as it is. Threads: a worker; blocks on the disk.
class LibraryReader {
 public:
  virtual ~LibraryReader() = default;
  /// By content, never by name. One that ends early or is damaged gives what stood before that, with a note;
  /// it fails where that is no track at all. Cancelled: it was told to stop.
  virtual support::Result<ForeignLibrary> Read(const std::string& path, LibraryWatch& watch) = 0;
};

}  // namespace catalogue
