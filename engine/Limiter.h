// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace engine {

/// Keeps a device's sum within full scale without being heard: looks 1.5 ms ahead and turns the gain down in
/// time.
///
/// Law: everything leaves LookAhead() frames late; what never passes full scale leaves bit for bit as it
/// came. Threads: the callback; memory is taken at construction only.
class Limiter {
 public:
  Limiter(int sample_rate, int max_channels);

  [[nodiscard]] int LookAhead() const noexcept { return look_ahead_; }
  /// In place. Requires: 1 to max_channels, the same at every call between two Resets.
  void Process(std::span<float> interleaved, int channels) noexcept;
  void Reset() noexcept;

 private:
  /// The gain for the frame that leaves now, given what the frame that comes in needs.
  [[nodiscard]] float GainFor(float needed) noexcept;

  const int look_ahead_;
  const double release_;
  std::vector<float> delayed_;
  std::vector<double> needed_;  ///< envelope of the frames inside
  std::vector<std::int64_t>
      gains_;  ///< lowest envelope at each of the last frames; whole numbers sum exactly
  std::int64_t gain_sum_ = 0;
  std::size_t at_ = 0;
  std::size_t needed_at_ = 0;
  double envelope_ = 1;  // in single precision its last steps to 1 would round to nothing
  bool busy_ = false;
};

}  // namespace engine
