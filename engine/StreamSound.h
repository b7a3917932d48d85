// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "engine/PeakingEqualiser.h"
#include "engine/ThreeBands.h"
#include "engine/effects/EffectChain.h"

namespace engine {

/// The bands of one stream, in their fixed order: three, then ten; behind them, once one of them was wanted,
/// its effects. Threads: as its parts.
class StreamSound final : public StreamEffect {
 public:
  explicit StreamSound(int sample_rate) : three(sample_rate), ten(sample_rate) {}

  /// Sounds as another one does. The owner's.
  void SoundAs(const StreamSound& other) {
    three.Set(other.three.Wanted());
    ten.BandsAs(other.ten);
  }

  void Process(std::span<float> stereo) noexcept override {
    three.Process(stereo);
    ten.Process(stereo);
  }
  void Reset() noexcept override {
    three.Reset();
    ten.Reset();
  }

  ThreeBands three;
  PeakingEqualiser ten;
  decks::EffectSettings effects;       ///< as they are wanted
  std::unique_ptr<EffectChain> chain;  ///< from the first of them that is heard
};

}  // namespace engine
