// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "karaoke/SongReader.h"
#include "karaoke/TempoMap.h"

namespace karaoke {

/// What a song's file holds for its singers: its words, when they are sung, and what they are called.
///
/// Where Song is read as strictly as it always was, this takes what real files are: text or lyric events of
/// whichever track holds the words, with or without a tempo or a signature.
struct Lyric {
  /// In the order of time; one after the other they are their lines. Bytes as the file has them, without
  /// the marks of lines and pages.
  std::vector<Syllable> syllables;
  std::string title;
  std::string artist;
  std::string language;               ///< as the file calls it, "ENGL"; empty when it does not say
  std::string coding;                 ///< the code page that the file names; empty when it does not
  std::optional<TempoMap> tempo_map;  ///< absent when the ticks have no length: then nothing is sung
};

/// Of a MIDI file in memory. Never fails: what is missing is empty.
[[nodiscard]] Lyric ReadLyric(std::string_view bytes);

}  // namespace karaoke
