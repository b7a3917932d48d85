// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace engine {

/// How loud a room is while nobody speaks: the quietest of the 20 ms of the last three seconds, as speech
/// has pauses (after R. Martin, "Noise power spectral density estimation based on optimal smoothing and
/// minimum statistics", IEEE Trans. Speech Audio Proc. 9(5), 2001, without the spectrum). Threads: one.
class NoiseFloor {
 public:
  explicit NoiseFloor(int sample_rate);
  /// square: of a sample.
  void Hear(float square) noexcept;
  /// Mean square; 0 before the first quarter of a second.
  [[nodiscard]] float Lowest() const noexcept { return lowest_; }
  void Reset() noexcept;

 private:
  static constexpr std::size_t kQuarters = 12;
  void EndPart() noexcept;

  const int part_frames_;
  int frames_ = 0;
  int parts_ = 0;
  double sum_ = 0;
  float quietest_ = 0;  ///< of the present quarter
  std::array<float, kQuarters> quarters_{};
  std::size_t heard_ = 0;
  float lowest_ = 0;
};

/// When a gate opens and closes: mean square levels, 1 is full scale.
struct GateLevels {
  bool automatic = true;  ///< by the noise of the room; the levels are then the gate's own
  float open = 0;
  float close = 0;
};

/// Lets a voice through and a room's noise not.
///
/// It measures the mean square over 4 ms; opens within 3 ms, stays open for 250 ms below the lower of its two
/// levels and closes over 250 ms. By itself it opens 14 dB above the room's noise and closes 8 dB above it,
/// between -60 and -30 dB of full scale; -45 dB before it knows the room. Threads: the callback.
class VoiceGate {
 public:
  explicit VoiceGate(int sample_rate);

  void Set(const GateLevels& levels) noexcept { levels_ = levels; }
  /// What it hears counts, but everything passes.
  void SetThrough(bool through) noexcept { through_ = through; }
  void Process(std::span<float> mono) noexcept;
  /// Somebody speaks.
  [[nodiscard]] bool Open() const noexcept { return open_; }
  void Reset() noexcept;

 private:
  [[nodiscard]] GateLevels Now() const noexcept;

  const float smooth_;
  const float rise_;
  const float fall_;
  const int hold_frames_;
  GateLevels levels_;
  NoiseFloor floor_;
  bool through_ = false;
  bool open_ = false;
  float square_ = 0;
  int held_ = 0;
  float gain_ = 0;
};

}  // namespace engine
