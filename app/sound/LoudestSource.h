// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "app/ports/HeardSound.h"
#include "decks/ports/AudioEngine.h"

namespace app {

/// What may be heard: a deck, or the song of a synthesiser.
struct Audible {
  decks::StreamHandle stream = 0;
  bool playing = false;
  int volume = 0;  ///< 0 to 100
};

/// Finds the loudest audible source and listens to it.
///
/// Law: it stays with a source until another one is clearly louder, so that two of the same loudness are not
/// shown by turns. The master volume plays no part. Threads: the conductor, once a tick.
class LoudestSource {
 public:
  /// In the order of HeardFrom.
  using Sources = std::array<Audible, kHeardSources>;

  explicit LoudestSource(decks::AudioEngine& engine) : engine_(engine) {}

  [[nodiscard]] HeardSound Listen(const Sources& sources);

 private:
  [[nodiscard]] float LoudnessOf(const Audible& source) const;
  void Choose(const Sources& sources);

  decks::AudioEngine& engine_;
  std::array<float, kHeardSources> loudness_{-60, -60, -60, -60};  ///< dB behind the fader; falls slowly
  HeardFrom from_ = HeardFrom::Nothing;
};

}  // namespace app
