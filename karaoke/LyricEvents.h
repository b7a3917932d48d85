// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "karaoke/MidiFile.h"
#include "karaoke/TempoMap.h"

namespace karaoke {

/// One text or lyric event; a view into the file's bytes.
struct LyricEvent {
  std::int64_t tick = 0;  ///< on the song's line of ticks
  std::string_view text;
};

/// The events of a MIDI file that are its words, and its header tags.
struct LyricEvents {
  /// Text events mark lines with "/" and "\"; lyric events do so too, or with CR and LF.
  enum class Kind { Text, Lyric };
  Kind kind = Kind::Text;
  std::vector<LyricEvent> events;
  std::vector<std::string_view> titles;  ///< "@T" tags of all tracks, without their mark
  std::string_view language;             ///< "@L", or what an XF chunk calls it
};

/// Chooses the track and the kind of event that hold the words: many files carry the same words twice, some
/// have texts that are no words.
[[nodiscard]] LyricEvents FindLyricEvents(const MidiFile& file, const SongTimes& times);

}  // namespace karaoke
