// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

namespace engine {

struct CompressorCurve {
  float threshold = -20;  ///< dB of full scale
  float slope = 0;        ///< 1 - 1 / ratio; 0 lets all through
  bool operator==(const CompressorCurve&) const = default;
};

/// Brings a voice's loud and soft closer together: feed-forward, in dB, with a knee of 6 dB and a smooth,
/// decoupled detector of 5 and 120 ms (D. Giannoulis, M. Massberg, J. D. Reiss, "Digital Dynamic Range
/// Compressor Design - A Tutorial and Analysis", J. Audio Eng. Soc. 60(6), 2012; equations 4 and 17).
/// Threads: the callback.
class VoiceCompressor {
 public:
  explicit VoiceCompressor(int sample_rate);

  void Set(const CompressorCurve& curve) noexcept { curve_ = curve; }
  void Process(std::span<float> mono) noexcept;
  /// dB by which it turns down now.
  [[nodiscard]] float Reduction() const noexcept { return reduction_; }
  void Reset() noexcept { held_ = reduction_ = 0; }

 private:
  [[nodiscard]] float Wanted(float level) const noexcept;

  const float attack_;
  const float release_;
  CompressorCurve curve_;
  float held_ = 0;
  float reduction_ = 0;
};

}  // namespace engine
