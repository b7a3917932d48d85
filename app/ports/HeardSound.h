// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <memory>

#include "music/BeatGrid.h"
#include "music/Spectrum.h"

namespace app {

/// What may be the loudest that is heard. Deck 4 is in the head-phones alone; a song is one that a
/// synthesiser plays, others are on deck 3.
enum class HeardFrom { Nothing, Deck1, Deck2, Deck3, Song };

inline constexpr std::size_t kHeardSources = 4;  ///< all but Nothing

/// 1 to 3; 0 when it is no deck.
[[nodiscard]] constexpr int DeckOf(HeardFrom from) {
  return from == HeardFrom::Song ? 0 : static_cast<int>(from);
}

/// The sound of the loudest audible source as it is heard now.
struct HeardSound {
  HeardFrom from = HeardFrom::Nothing;  ///< and all below is 0 then
  music::Spectrum spectrum{};
  std::array<float, 1024> samples{};  ///< left and right together, the newest one last; 1 is full scale
};

/// The song that a synthesiser plays, as far as lamps and visualisers follow it.
struct HeardSong {
  bool playing = false;
  int volume = 0;                         ///< 0 to 100
  std::chrono::microseconds position{0};  ///< heard now
  double speed = 1;                       ///< seconds of the song a second
  /// As they stand in the file; null while no song is there. Shared with whoever made the song ready; it
  /// never changes.
  std::shared_ptr<const music::BeatGrid> grid;
};

}  // namespace app
