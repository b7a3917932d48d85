// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <rubberband/RubberBandStretcher.h>

#include <vector>

#include "engine/ports/Stretcher.h"

namespace platform::stretch {

/// RubberBand's finer engine with the short window: the only one of good sound whose heap stands still while
/// the tempo moves.
class RubberBandStretcher : public engine::Stretcher {
 public:
  explicit RubberBandStretcher(int sample_rate);

  void SetTempo(double ratio) override;
  void SetPitch(double semitones) override;
  void Reset() override;
  [[nodiscard]] int StartPad() const override;
  [[nodiscard]] int StartDelay() const override;
  [[nodiscard]] int Wanted() const override;
  void Put(std::span<const float> left, std::span<const float> right) override;
  [[nodiscard]] int Available() const override;
  int Take(std::span<float> left, std::span<float> right) override;

 private:
  RubberBand::RubberBandStretcher stretcher_;
};

}  // namespace platform::stretch
