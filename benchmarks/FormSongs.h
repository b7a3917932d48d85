// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace bench {

/// A synthetic track whose key, bars and parts are known, to measure their finders with: intro, verses,
/// builds, drops, breaks and outro of 4 to 32 bars in four-four.
struct FormSong {
  int tonic = 0;  ///< 0 is C
  bool minor = false;
  double bpm = 0;
  std::vector<double> beats;          ///< seconds; the first opens a bar
  std::vector<double> edges;          ///< seconds, between the parts
  std::vector<std::int16_t> samples;  ///< left, right, ... at 44.1 kHz
};

/// Plain: fills and crashes end and begin the parts. Hard: none of them, and the chords come half a beat
/// early in every second song.
enum class FormKind { Plain, Hard };

/// The same song for the same seed on every machine.
[[nodiscard]] FormSong MakeFormSong(std::uint64_t seed, FormKind kind);

}  // namespace bench
