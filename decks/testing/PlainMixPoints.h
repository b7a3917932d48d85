// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

// The mix points of samples in memory, read off without any engine; the edges of the blocks are kept.

namespace decks::testing {

[[nodiscard]] inline bool Louder(std::int16_t sample, double level) {
  return std::abs(static_cast<double>(sample)) > level;
}

/// In bytes, as the other. channels: a block of the decoder holds whole frames only.
[[nodiscard]] inline std::int64_t PlainStart(std::span<const std::int16_t> samples, int percent,
                                             std::size_t channels = 1) {
  const std::size_t block = 10'000 / channels * channels;
  for (std::size_t first = 0; first < samples.size(); first += block) {
    const auto part = samples.subspan(first, std::min(block, samples.size() - first));
    for (std::size_t i = 1; i < part.size(); ++i) {
      if (!Louder(part[i], 80.0 * percent)) continue;
      while (i > 0 && Louder(part[i], 20.0 * percent)) --i;
      return static_cast<std::int64_t>(2 * (first + i));
    }
  }
  return static_cast<std::int64_t>(2 * samples.size());
}

[[nodiscard]] inline std::int64_t PlainEnd(std::span<const std::int16_t> samples, int percent,
                                           std::size_t channels = 1) {
  const std::size_t block = 50'000;
  std::size_t first = samples.size() < block ? 0 : samples.size() - block;
  for (;;) {
    const std::size_t begin = first / channels * channels;
    const auto part = samples.subspan(begin, std::min(block / channels * channels, samples.size() - begin));
    for (std::size_t i = part.size(); i-- > 1;) {
      if (Louder(part[i], 40.0 * percent)) return static_cast<std::int64_t>(2 * (begin + i));
    }
    if (first == 0) return 0;
    first = first < block ? 0 : first - block;
  }
}

}  // namespace decks::testing
