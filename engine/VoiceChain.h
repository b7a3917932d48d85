// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <span>

#include "decks/ports/Microphone.h"
#include "engine/Voice.h"
#include "engine/VoiceCompressor.h"
#include "engine/VoiceFilter.h"
#include "engine/VoiceGate.h"
#include "music/PeakingFilter.h"

namespace engine {

/// What a VoiceChain does, reckoned for a sample rate.
struct VoiceShape {
  float gain = 1;
  music::Biquad low_cut{};
  bool gated = true;
  GateLevels gate{};
  std::array<music::Biquad, 3> bands{};
  CompressorCurve compressor{};
  float makeup = 1;
};

/// Values that are no numbers count as their defaults, those out of range as its end.
[[nodiscard]] VoiceShape ShapeOf(const decks::VoiceSettings& settings, int sample_rate);

/// What is done to a voice, in this order: gain, low cut, gate, three bands (shelves at 200 Hz and 5 kHz, a
/// bell at 1.2 kHz), compressor, make-up, level meter. It adds no delay. Threads: the callback.
class VoiceChain {
 public:
  explicit VoiceChain(int sample_rate);

  void Set(const VoiceShape& shape) noexcept;
  void Process(std::span<float> mono) noexcept;
  /// Of the gate, also where it lets all through.
  [[nodiscard]] bool Speaks() const noexcept { return gate_.Open(); }
  void KeepOpen(bool open) noexcept { kept_open_ = open; }
  /// The highest sample before all that is done, falling by 26 dB a second, and behind it.
  [[nodiscard]] float Input() const noexcept { return input_; }
  [[nodiscard]] float Level() const noexcept { return level_; }
  [[nodiscard]] float Reduction() const noexcept { return compressor_.Reduction(); }
  void Reset() noexcept;

 private:
  const int ramp_frames_;
  const float fall_;
  bool gated_ = true;
  bool kept_open_ = false;
  RampedValue gain_{1};
  VoiceFilter low_cut_;
  VoiceGate gate_;
  std::array<VoiceFilter, 3> bands_;
  VoiceCompressor compressor_;
  RampedValue makeup_{1};
  float input_ = 0;
  float level_ = 0;
};

}  // namespace engine
