// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tools/composer/studio/Sound.h"

namespace tools::composer {

// Each adds one hit to the sound at a frame.

struct KickShape {
  double deep_hz = 48;
  double high_hz = 220;
  double sweep_seconds = 0.045;  ///< from high to deep
  double ring_seconds = 0.28;
};
void Kick(Stereo& sound, std::size_t at, double level, const KickShape& shape = {});
void Snare(Stereo& sound, std::size_t at, double level, Random& random, double tone_hz = 190);
void Clap(Stereo& sound, std::size_t at, double level, Random& random);
/// A closed hat rings about 0.04 s, an open one 0.25.
void Hat(Stereo& sound, std::size_t at, double level, double seconds, Random& random, double pan = 0.15);
void Shaker(Stereo& sound, std::size_t at, double level, Random& random);
void Tom(Stereo& sound, std::size_t at, double level, double hz, double pan);
void Crash(Stereo& sound, std::size_t at, double level, Random& random);
/// Noise that rises in height and level up to the given end.
void Riser(Stereo& sound, std::size_t at, std::size_t frames, double level, Random& random);

}  // namespace tools::composer
