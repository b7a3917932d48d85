// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace bench {

/// Patterns of one or two bars in sixteenths: X strong, x plain, o soft, a dot is a rest. In the bass r is
/// the chord's root, 8 its octave, 5 the fifth. An empty pattern is silent.
struct Groove {
  std::string_view kick{}, snare{}, clap{}, rim{}, closed{}, open{}, shaker{};
  std::string_view bass{}, chords{};
};

enum class ChordSound { Stab, ElectricPiano, Organ, Guitar, Distorted, Strings };

struct TempoStyle {
  std::string_view name;
  double slowest = 80, fastest = 180;
  int beats_per_bar = 4;
  bool live = false;       ///< played by hand: strokes beside the grid, a pulse that sways
  double swing = 0;        ///< the most by which every second sixteenth is late, as a share of a sixteenth
  double duck = 0;         ///< how far the bass drum turns the music down
  double chord_steps = 4;  ///< the most that a chord is held
  double bass_steps = 2;   ///< and a bass note
  double drums = 1;        ///< their share of the mix
  std::vector<ChordSound> chord_sounds;
  std::vector<Groove> grooves;
};

[[nodiscard]] std::span<const TempoStyle> TempoStyles();

}  // namespace bench
