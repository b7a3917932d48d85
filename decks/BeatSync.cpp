// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/BeatSync.h"

#include <algorithm>
#include <cmath>

namespace decks {
namespace {

using music::Seconds;

constexpr double kGain = 0.8;         ///< bend for each second of error; gone to a third in 1.25 s
constexpr Seconds kSmoothing{0.3};    ///< the clocks of devices are read with some jitter
constexpr Seconds kLongestStep{0.5};  ///< after a stall the old error says little

bool HasBeats(const BeatSide& side) {
  return side.grid != nullptr && !side.grid->Empty();
}

/// Around the place that is heard, of the file as it was recorded: over some beats, because each by itself
/// may have been found a little early or late.
double TempoOf(const BeatSide& side) {
  constexpr double kBeats = 8;
  if (!HasBeats(side)) return side.bpm;
  const double first = side.grid->BeatAt(side.heard) - kBeats / 2;
  return kBeats * 60 / (side.grid->TimeOf(first + kBeats) - side.grid->TimeOf(first)).count();
}

/// Of the whole file: it chooses the multiple, which must not change with the place.
double NominalOf(const BeatSide& side) {
  return HasBeats(side) ? side.grid->Nominal().value : side.bpm;
}

}  // namespace

double BeatSync::SpeedFor(const BeatSide& leader, const BeatSide& follower) const {
  return TempoOf(leader) * leader.speed * multiple_ / TempoOf(follower);
}

bool BeatSync::Begin(const BeatSide& leader, const BeatSide& follower, double most_percent) {
  const double led = NominalOf(leader) * leader.speed / leader.bend;
  const double own = NominalOf(follower);
  if (!(led > 0) || !(own > 0)) return false;
  most_percent_ = most_percent;
  multiple_ = 1;
  for (const double multiple : {2.0, 0.5}) {
    if (std::abs(std::log(led * multiple / own)) < std::abs(std::log(led * multiple_ / own))) {
      multiple_ = multiple;
    }
  }
  offset_ = 0;
  smooth_.reset();
  return std::abs(led * multiple_ / own - 1) * 100 <= most_percent_;
}

std::optional<double> BeatSync::BeatsLate(const BeatSide& leader, const BeatSide& follower) const {
  if (!HasBeats(leader) || !HasBeats(follower) || !leader.playing || !follower.playing) return std::nullopt;
  const double wanted = leader.grid->BeatAt(leader.heard) * multiple_;
  const double late = wanted - follower.grid->BeatAt(follower.heard) - offset_;
  // A follower at half the pace may beat with either of two beats.
  const double whole = multiple_ < 1 ? multiple_ : 1;
  return late - whole * std::round(late / whole);
}

std::optional<Seconds> BeatSync::Error(const BeatSide& leader, const BeatSide& follower) const {
  const auto late = BeatsLate(leader, follower);
  if (!late) return std::nullopt;
  return Seconds(*late * 60 / (TempoOf(follower) * follower.speed));
}

void BeatSync::Rebase(const BeatSide& leader, const BeatSide& follower) {
  if (const auto late = BeatsLate(leader, follower)) offset_ += *late;
  smooth_.reset();
}

std::optional<BeatSync::Step> BeatSync::Next(const BeatSide& leader, const BeatSide& follower,
                                             Seconds after) {
  Step step;
  step.speed = SpeedFor(leader, follower);
  // A beat that lies a little off moves the tempo at one place by some percent more than that of the whole.
  constexpr double kMargin = 2;
  if (!std::isfinite(step.speed) || std::abs(step.speed / leader.bend - 1) * 100 > most_percent_ + kMargin) {
    return std::nullopt;
  }
  const auto error = Error(leader, follower);
  if (!error) {
    smooth_.reset();
    return step;
  }
  const Seconds elapsed = std::clamp(after, Seconds(0), kLongestStep);
  if (smooth_) {
    *smooth_ += (*error - *smooth_) * (elapsed / (kSmoothing + elapsed));
  } else {
    smooth_ = *error;
  }
  step.error = *smooth_;
  step.bend = 1 + std::clamp(kGain * smooth_->count(), -follower.most_bend, follower.most_bend);
  return step;
}

}  // namespace decks
