// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "music/BeatGrid.h"

namespace decks {

inline constexpr double kShortestBeats = 1.0 / 32;
inline constexpr double kMostBeats = 32;

/// Half or twice as many beats, within what a loop may have. up: above 0 doubles.
[[nodiscard]] double Resized(double beats, int up);

/// What beats are on one track: by its grid, else by its tempo alone.
class BeatMeasure {
 public:
  /// grid: null when none is known. bpm: 0 when unknown.
  BeatMeasure(std::shared_ptr<const music::BeatGrid> grid, double bpm) : grid_(std::move(grid)), bpm_(bpm) {}

  [[nodiscard]] bool HasGrid() const { return grid_ != nullptr && !grid_->Empty(); }
  [[nodiscard]] bool Known() const { return HasGrid() || bpm_ > 0; }
  /// The nearest beat; the place itself without a grid.
  [[nodiscard]] music::Seconds Snapped(music::Seconds place) const;
  /// So many beats on, or back. Requires: Known().
  [[nodiscard]] music::Seconds After(music::Seconds place, double beats) const;

 private:
  std::shared_ptr<const music::BeatGrid> grid_;  // as the deck's
  double bpm_;
};

}  // namespace decks
