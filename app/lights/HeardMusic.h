// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>

#include "app/WorkstationView.h"
#include "decks/ports/AudioEngine.h"
#include "lightorgan/ports/Music.h"

namespace app {

/// Where the light organ's spectra come from.
struct OrganSound {
  decks::AudioEngine& engine;
  std::function<decks::StreamHandle(HeardFrom)> stream;  ///< on the conductor
};

/// The loudest audible source as the light organ hears it, at the heard clock.
///
/// Law: the sides of a spectrum are taken from the engine at most once a tick, and only when they are asked
/// for. Threads: the conductor.
class HeardMusic final : public lightorgan::SpectrumSource, public lightorgan::BeatSource {
 public:
  explicit HeardMusic(OrganSound sound) : sound_(std::move(sound)) {}

  /// decks: what all answers are about, until it is called again; borrowed. Null: nothing plays.
  void Look(const WorkstationView* decks);

  [[nodiscard]] std::optional<lightorgan::Bins> Spectrum(lightorgan::Channels channels) override;
  [[nodiscard]] bool AnyPlaying() override;
  [[nodiscard]] std::optional<lightorgan::HeardBeat> LastBeat(std::chrono::microseconds ahead) override;

 private:
  struct Sides {
    lightorgan::Bins left;
    lightorgan::Bins right;
  };
  [[nodiscard]] HeardFrom From() const { return decks_ == nullptr ? HeardFrom::Nothing : decks_->sound.from; }
  void TakeSides();

  OrganSound sound_;
  const WorkstationView* decks_ = nullptr;
  std::optional<Sides> sides_;
};

/// Of what is heard, in beats a minute; 0 when unknown.
[[nodiscard]] double HeardTempo(const WorkstationView& decks);

/// Where what is heard is in its beats, and how fast they come; nothing where no beats are known.
struct HeardBeats {
  double beat = 0;   ///< from the grid's first, with its fraction
  double tempo = 0;  ///< beats a minute
};
[[nodiscard]] std::optional<HeardBeats> HeardBeatsOf(const WorkstationView& decks);

}  // namespace app
