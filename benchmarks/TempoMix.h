// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "benchmarks/SongDice.h"
#include "tools/composer/studio/Sound.h"

namespace bench {

/// What a band has played, before it is mixed.
struct BandBuses {
  tools::composer::Stereo drums, music;
  std::vector<float> to_room;      ///< every second frame, both channels together
  std::vector<std::size_t> kicks;  ///< the frames at which the bass drum falls

  explicit BandBuses(std::size_t frames) : drums(frames), music(frames), to_room(frames / 2 + 1) {}
};

/// How the finished sum is treated.
struct BandMix {
  double loudness_db = -14;  ///< mean level before the compressor
  double bright_db = 3;      ///< by which the highs are lifted
  double squeeze = 0.5;      ///< 0 leaves the dynamics, 1 irons them flat
  double duck = 0;           ///< how far the bass drum turns the music down
  double room = 0.2;         ///< how much of the room is heard
  double room_rings = 0.8;   ///< share that each turn around the room leaves
  double hiss_db = -70;
  double fade_in_seconds = 0, fade_out_seconds = 0;
};

/// A record of its own sound each time.
[[nodiscard]] BandMix ChooseMix(SongDice& dice, double most_duck);
/// The samples of both channels in turn: ducked, with room and hiss, compressed, faded. The buses are used
/// up.
[[nodiscard]] std::vector<std::int16_t> MixDown(BandBuses& buses, const BandMix& mix,
                                                tools::composer::Random& noise);

}  // namespace bench
