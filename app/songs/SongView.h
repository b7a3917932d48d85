// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "karaoke/DiscImage.h"
#include "karaoke/LyricShow.h"
#include "support/Clock.h"
#include "support/Sentences.h"

namespace app {

/// The words of a song and what its title card says. It never changes.
struct SongWords {
  std::string title;
  std::string artist;
  karaoke::LyricShow show;  ///< without lines where the file has no words
  /// The code page of all these bytes that are no UTF-8, as iconv calls it; empty: Windows-1252.
  std::string coding{};
  std::string guessed_coding{};  ///< what it is without a choice by hand
  bool chosen_coding = false;    ///< by hand
  /// What the user is to be told about the file.
  std::optional<support::Sentence> note{};
};

/// Where a song is heard, and how it goes on from there.
struct HeardPlace {
  std::chrono::microseconds position{0};  ///< heard at the time `at`
  support::TimePoint at{};
  double speed = 0;  ///< seconds of the song a second; 0 while it stands
  std::chrono::microseconds length{0};

  /// Heard at another moment, as far as that can be told from here.
  [[nodiscard]] std::chrono::microseconds HeardAt(support::TimePoint now) const;
};

/// The graphics of a disc that the singers see.
struct DiscView {
  std::shared_ptr<const karaoke::DiscImage> image;  ///< null: none. Shared with the window's pictures
  HeardPlace place;                                 ///< of the song they belong to
};

/// What the window draws of karaoke; a snapshot of one tick.
struct SongView {
  enum class State { Empty, Loading, Playing, Paused, Stopped, Ended };
  State state = State::Empty;
  std::string filename;
  std::string coming;                      ///< the file that is being made ready, else empty
  std::shared_ptr<const SongWords> words;  ///< null when no song is there. Shared with the window's pictures
  std::chrono::microseconds position{0};   ///< heard at the time `at`
  support::TimePoint at{};
  double speed = 0;  ///< seconds of the song a second; 0 while it stands
  std::chrono::microseconds length{0};
  int volume = 100;    ///< 0 to 100
  int semitones = 0;   ///< -12 to 12; while a song comes, what it will begin with
  double percent = 0;  ///< tempo from the original, in the same way
  int melody = 100;    ///< level of the channel that plays what is sung, 0 to 100
  bool has_melody = false;
  std::string note;            ///< a sentence about the song that is there, else empty
  std::string failure;         ///< a sentence about the newest song that could not be played
  std::uint64_t failures = 0;  ///< counts them
  DiscView disc;               ///< goes before the words

  /// Heard at another moment, as far as that can be told from here.
  [[nodiscard]] std::chrono::microseconds HeardAt(support::TimePoint now) const;
};

}  // namespace app
