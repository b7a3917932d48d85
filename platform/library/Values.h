// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/ports/LibraryReader.h"

namespace platform::library {

/// Longer texts are cut between letters, longer paths are none.
inline constexpr std::size_t kLongestText = 1000;
inline constexpr std::size_t kLongestPath = 4096;
inline constexpr std::size_t kMostCues = 256;     ///< of a track
inline constexpr std::size_t kMostTempos = 4096;  ///< the same
inline constexpr std::size_t kMostTracks = 2'000'000;
inline constexpr std::size_t kMostLists = 100'000;
inline constexpr std::size_t kMostEntries = 20'000'000;  ///< of all lists

/// A finite number that the text is, blanks around it aside.
[[nodiscard]] std::optional<double> Number(std::string_view text);
[[nodiscard]] int Whole(std::string_view text, int otherwise);
[[nodiscard]] std::string Cut(std::string_view text);
[[nodiscard]] std::string Colour(int red, int green, int blue);
/// Steps of ".." and "." taken, "/" between its parts; empty where it is too long or holds a control
/// character.
[[nodiscard]] std::string CleanPath(std::string path);
/// Of "file://localhost/C:/a%20b.mp3", "file:///home/a.mp3" and the like; empty for anything else.
[[nodiscard]] std::string PathOfUrl(std::string_view url);

/// Collects one library, and what is left out of it.
class Gathered {
 public:
  Gathered(catalogue::LibraryKind kind, catalogue::LibraryWatch& watch) : watch_(watch) {
    library_.kind = kind;
  }

  /// A cue before the start of its track, or further than a day, is left out; a loop that does not end behind
  /// its start is a cue.
  void AddCue(catalogue::ForeignTrack& track, catalogue::ForeignCue cue);
  /// One that lies where the last one's beats lie anyhow, at the same tempo, says nothing new. One before the
  /// start of its track begins with the first beat in it.
  static void AddTempo(catalogue::ForeignTrack& track, catalogue::ForeignTempo tempo, int beats_in_bar = 4);
  /// Its place; nothing where it has no path that can be used.
  std::optional<std::uint32_t> AddTrack(catalogue::ForeignTrack track);
  /// Its number, from 1; 0 where there are too many.
  std::size_t AddList(const std::string& name);
  void AddEntry(std::size_t list, std::optional<std::uint32_t> track);
  /// With its notes.
  [[nodiscard]] catalogue::ForeignLibrary Take();

 private:
  catalogue::LibraryWatch& watch_;
  catalogue::ForeignLibrary library_;
  std::size_t entries_ = 0;
  std::size_t lost_tracks_ = 0, lost_cues_ = 0, lost_entries_ = 0, lost_lists_ = 0;
};

}  // namespace platform::library
