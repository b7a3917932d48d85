// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <soundtouch/SoundTouch.h>

#include <array>

#include "engine/ports/Stretcher.h"

namespace platform::stretch {

/// SoundTouch: a fortieth of the finer engine's work, for machines that have no more to give. Beats smear at
/// large changes of tempo.
class SoundTouchStretcher : public engine::Stretcher {
 public:
  explicit SoundTouchStretcher(int sample_rate);

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
  static constexpr std::size_t kMostAtOnce = 512;

  void GrowBuffers();

  const int sample_rate_;
  double tempo_ = 1;
  double pitch_ratio_ = 1;
  soundtouch::SoundTouch stretcher_;
  std::array<float, 2 * kMostAtOnce> interleaved_{};
};

}  // namespace platform::stretch
