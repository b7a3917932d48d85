// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// A synthetic piece of music whose tempo and beats are known, to measure beat trackers with.
///
/// *Law*: the tempo is the pulse that a DJ matches, not the one that the drums hit hardest. In four-four it
/// is the quarter that counts four to a bar: drum'n'bass is 160 to 180, also where the snare falls on three
/// alone; hip-hop and ballads stay between 80 and 110; the reggae guitar plays between the beats, never on
/// them. In three-four it is the quarter, three to a bar.
struct TempoSong {
  std::string style;
  double bpm = 0;  ///< 80 to 180; live styles sway around it by a few milliseconds, the mean is exact
  int beats_per_bar = 4;
  std::vector<double>
      beats;  ///< seconds; also where nothing is struck, such as in a break; the first opens a bar
  std::vector<std::int16_t> samples;  ///< left, right, ... at 44.1 kHz, 60 to 120 seconds
};

/// The same song for the same seed on every machine. Neighbouring seeds go through the styles in turn.
[[nodiscard]] TempoSong MakeTempoSong(std::uint64_t seed);

/// Runs "--song SEED FILE": writes a song as a sound file and prints its style, tempo and first beats.
int WriteTempoSong(int argc, char* argv[]);

}  // namespace bench
