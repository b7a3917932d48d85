// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tools/composer/studio/Sound.h"

namespace tools::composer {

/// Times in seconds, the sustain a share of the peak.
struct Envelope {
  double attack = 0.002;
  double decay = 0.2;
  double sustain = 0.5;
  double release = 0.1;

  /// At a time after the note began, for a note held that long.
  [[nodiscard]] double At(double t, double held) const;
};

/// How a synthesiser's voice is set.
struct Patch {
  double saw = 0, square = 0, sine = 0;  ///< shares of the wave forms
  double fm_ratio = 0, fm_index = 0;     ///< a sine that bends the phase: bells, electric pianos
  int unison = 1;                        ///< voices beside each other
  double detune_cents = 0;               ///< between the outermost of them
  double width = 0;                      ///< their spread in the stereo picture, 0 to 1
  double cutoff_hz = 18000;
  double sweep_octaves = 0;  ///< how far the filter's envelope opens it
  double resonance = 0.7;
  double drive = 1;
  double vibrato_cents = 0, vibrato_hz = 5;
  Envelope amp{};
  Envelope filter{};
};

struct Note {
  double pitch = 60;     ///< MIDI number; fractions bend
  double seconds = 0.2;  ///< held
  double level = 0.5;
  double pan = 0;  ///< -1 left to 1 right
};

/// Adds the note to the sound; what would ring beyond its end is left out.
void Play(Stereo& sound, std::size_t at, const Patch& patch, const Note& note);
/// A plucked string.
void Pluck(Stereo& sound, std::size_t at, const Note& note, double brightness, Random& random);

}  // namespace tools::composer
