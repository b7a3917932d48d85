// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/TempoSliders.h"

#include <algorithm>
#include <cmath>

namespace decks {
namespace {

double Within(double value, double least, double most) {
  return std::isfinite(value) ? std::clamp(value, least, most) : 0;
}

double Factor(double percent) {
  return 1 + percent / 100;
}

}  // namespace

TempoSliders Playable(const TempoSliders& sliders) {
  TempoSliders playable = sliders;
  playable.percent = Within(sliders.percent, -50, 100);
  playable.semitones = Within(sliders.semitones, -12, 12);
  playable.sample_percent = Within(sliders.sample_percent, -50, 100);
  return playable;
}

double SpeedOf(const TempoSliders& sliders) {
  return Factor(sliders.percent) * Factor(sliders.sample_percent);
}

void SetTempo(AudioEngine& engine, StreamHandle stream, const TempoSliders& sliders, double bend,
              int file_rate) {
  if (stream == 0) return;
  const bool locked = sliders.key_lock == KeyLock::On;
  const double tempo = Factor(sliders.percent) * bend;
  // The rate of the file itself is 0: then nothing is resampled that needs not be.
  const double rate = Factor(sliders.sample_percent) * (locked ? 1 : tempo);
  engine.BASS_FX_TempoSet(stream, locked ? static_cast<float>((tempo - 1) * 100) : 0.0F,
                          rate == 1 ? 0.0F : static_cast<float>(rate * file_rate),
                          static_cast<float>(sliders.semitones));
}

}  // namespace decks
