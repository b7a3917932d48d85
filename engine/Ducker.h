// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

namespace engine {

struct DuckShape {
  float depth = 12;      ///< dB; 0 leaves the music alone
  float attack = 0.05F;  ///< seconds from full to the depth
  float hold = 0.4F;     ///< of silence before the way back begins
  float release = 0.6F;  ///< from the depth to full
};

/// The gain of the music while somebody speaks, straight in dB.
///
/// Law: back at the top it is 1, so that the music passes bit for bit. Threads: the callback.
class Ducker {
 public:
  explicit Ducker(int sample_rate);

  void Set(const DuckShape& shape) noexcept;
  /// Whether somebody speaks from the next frame on.
  void Speaking(bool speaks) noexcept { speaks_ = speaks; }
  /// Whatever was set: back to full within 20 ms, without the hold.
  void Leave() noexcept { leaving_ = true; }
  /// Fills the span; false, with nothing filled, when all of it would be 1.
  bool Render(std::span<float> gains) noexcept;
  /// dB by which the music is turned down now, at least 0.
  [[nodiscard]] float Depth() const noexcept { return now_; }
  [[nodiscard]] bool Rests() const noexcept { return now_ == 0; }

 private:
  const int sample_rate_;
  DuckShape shape_;
  float fall_ = 0;  ///< dB a frame
  float rise_ = 0;
  int hold_frames_ = 0;
  bool speaks_ = false;
  bool leaving_ = false;
  int silent_ = 0;  ///< frames
  float now_ = 0;
  float gain_ = 1;  ///< at now_
};

}  // namespace engine
