// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace music {

/// Takes spectra of sound that comes piece by piece: frames under a Hann window.
///
/// Two neighbouring frames go through one complex transform, one as its real and one as its imaginary part.
class SpectrumFeed {
 public:
  /// Power of bin i, which stands for i / size of the sample rate; size / 2 of them.
  using Visit = std::function<void(std::span<const float> power)>;

  /// Each frame begins so many samples after the one before. Requires: the size is a power of two, the step
  /// no larger.
  SpectrumFeed(std::size_t size, std::size_t step);
  /// Each frame that is complete now, in order.
  void Add(std::span<const float> samples, const Visit& visit);

 private:
  void TransformPair();
  void Butterflies();

  const std::size_t size_, step_;
  std::vector<float> window_;
  std::vector<float> cosines_, sines_;  ///< for each level its own run, so that they are read in order
  std::vector<std::size_t> reversed_;
  std::vector<float> line_;
  std::vector<float> real_, imaginary_;
  std::vector<float> first_, second_;  ///< power of a pair
};

}  // namespace music
