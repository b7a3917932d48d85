// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <optional>
#include <span>

#include "decks/clsBassPlayer.h"
#include "decks/ports/AudioEngine.h"

namespace decks {

inline constexpr int kEqBands = 10;
inline constexpr int kEqSliders = 20;
/// In Hz, band 0 to 9.
inline constexpr std::array<int, kEqBands> kEqCentres{80,   170,  310,   600,   1000,
                                                      3000, 6000, 12000, 14000, 16000};

inline constexpr float kEqBandwidth = 2.5F;  ///< in octaves

/// The ten-band equaliser of the decks' main streams, moved by the slider array Eq.
///
/// Law: slider 1 moves band 0 and slider 10 band 9; slider 0 and those from 11 on address bands that no
/// stream has, and the engine is asked all the same. A slider acts on the decks that play when it is moved;
/// a stream that is opened begins flat. Threads: the engine's owner.
class Equaliser {
 public:
  explicit Equaliser(AudioEngine& engine) : engine_(engine) {}

  /// Right after OpenFile: ten bands at 0 dB.
  void SetUp(StreamHandle stream);

  using Gains = std::array<float, kEqBands>;
  /// What a stream sounds like, for the stream that takes its place on another output.
  [[nodiscard]] Gains GainsOf(StreamHandle stream);
  void SetGains(StreamHandle stream, const Gains& gains);

  /// The slider's value in whole decibels. Those out of 0 to 19 do nothing.
  [[nodiscard]] int Eq(int slider) const;
  void Eq(int slider, int decibels);
  /// Carries the slider's value to every deck that reports IsPlaying, in the given order.
  void SliderChanged(int slider, std::span<const clsBassPlayer* const> decks);

 private:
  AudioEngine& engine_;
  std::array<int, kEqSliders> sliders_{};
};

}  // namespace decks
