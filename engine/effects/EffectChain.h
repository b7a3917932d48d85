// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

#include "decks/ports/DeckEffects.h"
#include "engine/StreamEffect.h"
#include "engine/effects/EchoLine.h"
#include "engine/effects/Filters.h"
#include "engine/effects/Flanger.h"
#include "engine/effects/Reverb.h"
#include "engine/effects/Turns.h"
#include "support/TripleBuffer.h"

namespace engine {

/// The effects of a deck on one of its streams, behind its bands: filter, low pass, flanger, echo, echo with
/// a mixer, reverb, swap, rotate.
///
/// Law: what is off and has rung out passes every sample bit for bit and reckons nothing. What is moved gets
/// there in 20 ms, what is switched in 10. It takes its memory when it is made. Threads: Set by the owner,
/// the rest in the callback.
class EffectChain final : public StreamEffect {
 public:
  /// It begins as if it had been set so for ever. settings: InRange.
  EffectChain(int sample_rate, const decks::EffectSettings& settings);

  /// settings: InRange.
  void Set(const decks::EffectSettings& settings) noexcept;

  void Process(std::span<float> stereo) noexcept override;
  /// Everything that rings is gone.
  void Reset() noexcept override;
  [[nodiscard]] bool Rings() const noexcept override;

 private:
  void Take(const decks::EffectSettings& settings) noexcept;
  [[nodiscard]] bool Idle() const noexcept;
  void Listen(std::span<const float> stereo) noexcept;

  const int memory_frames_;  ///< after which filters and flanger have nothing left to give
  support::TripleBuffer<decks::EffectSettings> settings_;

  // The callback's.
  decks::EffectSettings taken_;
  KnobFilter filter_;
  LowPassFilter low_pass_;
  Flanger flanger_;
  EchoLine echo_;
  EchoLine echo3_;
  Reverb reverb_;
  Swap swap_;
  Rotate rotate_;
  int quiet_;  ///< frames since something was last heard behind it
};

}  // namespace engine
