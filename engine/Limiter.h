// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/TruePeak.h"

namespace engine {

/// Keeps the sum of a pair of speakers below a ceiling without being heard, between its samples too: looks
/// 1.5 ms ahead and turns the gain of both sides down in time.
///
/// Law: everything leaves LookAhead() frames late; what never passes the ceiling leaves bit for bit as it
/// came. Each frame costs the same, however loud it was before. Threads: the callback; memory is taken at
/// construction only.
class Limiter {
 public:
  static constexpr int kMostFrames = TruePeak::kMostFrames;

  /// ceiling: 1 is full scale.
  explicit Limiter(int sample_rate, float ceiling = 1);

  /// The frames by which everything comes late, the reading between samples included.
  [[nodiscard]] int LookAhead() const noexcept { return late_; }
  /// In place. Requires: two samples a frame, at most kMostFrames.
  void Process(std::span<float> stereo) noexcept;
  void Reset() noexcept;
  /// Lowest gain that was applied since the last call, 1 when nothing was turned down.
  [[nodiscard]] float TakeLowest() noexcept;

 private:
  /// The lowest of the newest values; unity where nothing was put.
  class SlidingLowest {
   public:
    explicit SlidingLowest(int length) : length_(length), kept_(static_cast<std::size_t>(length)) {}
    void Clear() noexcept { begin_ = count_ = 0; }
    [[nodiscard]] double Put(double value) noexcept;

   private:
    struct Kept {
      std::int64_t number = 0;
      double value = 1;
    };
    [[nodiscard]] std::size_t Wrapped(std::size_t at) const noexcept {
      return at < kept_.size() ? at : at - kept_.size();
    }
    const int length_;
    std::int64_t number_ = 0;
    std::vector<Kept> kept_;  ///< a ring of those that may still be the lowest, ascending
    std::size_t begin_ = 0;
    std::size_t count_ = 0;
  };

  /// The gain for the frame that leaves now, given what the newest reading needs.
  [[nodiscard]] float GainFor(float needed) noexcept;

  const float ceiling_;
  const int look_ahead_;
  const int late_;
  const double release_;
  TruePeak reader_;
  std::array<float, kMostFrames> peaks_{};
  std::vector<float> delayed_;  ///< stereo
  std::size_t delayed_at_ = 0;
  SlidingLowest lowest_;
  std::vector<std::int64_t>
      gains_;  ///< lowest envelope at each of the last frames; whole numbers sum exactly
  std::size_t gains_at_ = 0;
  std::int64_t gain_sum_ = 0;
  double envelope_ = 1;  // in single precision its last steps to 1 would round to nothing
  bool busy_ = false;
  float told_ = 1;
};

}  // namespace engine
