// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "decks/ports/AudioEngine.h"

namespace decks {

/// On: the tempo changes and the key stays. Off: both go together, as with a record.
enum class KeyLock { Off, On };

/// How fast and how high a deck is set to play.
struct TempoSliders {
  KeyLock key_lock = KeyLock::On;
  double percent = 0;         ///< tempo from the original, -50 to 100
  double semitones = 0;       ///< pitch, -12 to 12
  double sample_percent = 0;  ///< sample rate from the file's own, -50 to 100; moves tempo and pitch
  bool operator==(const TempoSliders&) const = default;
};

/// The nearest values that the engine plays; what is no number becomes the original.
[[nodiscard]] TempoSliders Playable(const TempoSliders& sliders);

/// Source seconds a second, with everything that moves the tempo.
[[nodiscard]] double SpeedOf(const TempoSliders& sliders);

/// Sets one stream of a file whose own rate is file_rate, in Hz. Nothing for a stream of 0.
/// bend: a factor on the tempo, 1 is none.
void SetTempo(AudioEngine& engine, StreamHandle stream, const TempoSliders& sliders, double bend,
              int file_rate);

}  // namespace decks
