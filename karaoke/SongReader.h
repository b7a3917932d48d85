// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "karaoke/TempoMap.h"
#include "support/Result.h"
#include "support/Sentences.h"

namespace karaoke {

/// A piece of a word and when it is sung.
struct Syllable {
  Microseconds at{0};
  int line = 0;
  std::string text;  ///< blanks at its ends part words
};

/// What is told of a song; what the reader did not get to is absent.
struct Song {
  std::optional<std::string> time_signature;  ///< "4/4"
  std::optional<std::uint32_t> tempo;         ///< microseconds a quarter note
  std::optional<float> bpm;
  std::optional<int> quarter_note;  ///< ticks, or what the header says of frames
  bool is_lyric = false;
  std::optional<std::string> titles;  ///< several are parted by CR LF
  std::optional<std::string> genre;
  std::optional<std::string> text_lyric;
  std::vector<std::string> lines;
  std::vector<Syllable> syllables;  ///< as they stand in the track
  Microseconds length{0};
  std::optional<TempoMap> tempo_map;  ///< absent when the ticks have no length
  std::vector<Metre> metres;          ///< as they come
  /// What is to be told to the user when the file is not what it should be.
  std::optional<support::Sentence> note;
};

/// The first title tag; empty without one.
[[nodiscard]] std::string TitleOf(const Song& song);
/// The second title tag, where songs name their artist; empty without one.
[[nodiscard]] std::string ArtistOf(const Song& song);

/// Reads a MIDI file in memory. Never fails: what is missing is absent.
///
/// The first time signature, the first tempo and the first lyric sign in the file's bytes count, wherever
/// they stand; without the first two nothing behind them is read.
[[nodiscard]] Song ReadSong(std::string_view bytes);

/// A whole file of at most 256 MB. Threads: any; blocks on the disk.
[[nodiscard]] support::Result<std::string> ReadSongBytes(const std::string& path);

}  // namespace karaoke
