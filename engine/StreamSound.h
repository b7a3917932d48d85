// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PeakingEqualiser.h"
#include "engine/ThreeBands.h"

namespace engine {

/// The effects of one stream, in their fixed order: three bands, then ten. Threads: as its parts.
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
};

}  // namespace engine
