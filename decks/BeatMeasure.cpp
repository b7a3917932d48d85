// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/BeatMeasure.h"

#include <algorithm>

namespace decks {

double Resized(double beats, int up) {
  return std::clamp(up > 0 ? beats * 2 : beats / 2, kShortestBeats, kMostBeats);
}

music::Seconds BeatMeasure::Snapped(music::Seconds place) const {
  if (!HasGrid()) return place;
  const music::Seconds nearest = grid_->NearestBeat(place);
  return nearest >= music::Seconds(0) ? nearest : grid_->NextBeat(music::Seconds(0));
}

music::Seconds BeatMeasure::After(music::Seconds place, double beats) const {
  if (HasGrid()) return grid_->TimeOf(grid_->BeatAt(place) + beats);
  return place + music::Seconds(60 / bpm_ * beats);
}

}  // namespace decks
