// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace app {

/// How loud a recording was along its way, for drawing. The longer it gets, the longer the stretches that its
/// columns stand for: an evening takes no more room than a song.
struct RecordedWave {
  static constexpr std::size_t kMostColumns = 1200;

  std::chrono::microseconds step{100'000};  ///< a column
  std::vector<std::uint8_t> columns;        ///< the loudest sample of each, 255 is full scale

  /// peak: of what was added before this place, 1 is full scale.
  void Add(std::chrono::microseconds place, float peak);
};

}  // namespace app
