// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/BeatGrid.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace music {
namespace {

constexpr double kFastest = 600;  ///< beats a minute, the pace of kShortestBeat
constexpr double kSlowest = 10;
constexpr double kMostBeats = 1'000'000;

support::Bpm TempoOf(Seconds beat) {
  return {60 / beat.count()};
}

Seconds BeatOf(support::Bpm tempo) {
  return Seconds(60 / std::clamp(tempo.value, kSlowest, kFastest));
}

double FactorOf(BeatScale scale) {
  switch (scale) {
    case BeatScale::Double:
      return 2;
    case BeatScale::Half:
      return 0.5;
    case BeatScale::TwoThirds:
      return 2.0 / 3;
    case BeatScale::ThreeHalves:
      break;
  }
  return 1.5;
}

}  // namespace

BeatGrid::BeatGrid(support::Bpm nominal, double confidence, std::vector<Seconds> beats)
    : nominal_(nominal), confidence_(std::clamp(confidence, 0.0, 1.0)) {
  for (const Seconds beat : beats) {
    if (!std::isfinite(beat.count())) continue;
    if (beats_.empty() || beat - beats_.back() >= kShortestBeat) beats_.push_back(beat);
  }
  if (beats_.size() < 2) *this = BeatGrid();
  if (beats_.empty()) return;
  const bool known = std::isfinite(nominal_.value) && nominal_.value > 0;
  if (!known) nominal_ = TempoOf((beats_.back() - beats_.front()) / static_cast<double>(beats_.size() - 1));
}

BeatGrid BeatGrid::Even(support::Bpm tempo, double confidence, Seconds anchor, Seconds length) {
  const Seconds beat = BeatOf(tempo);
  const double before = std::floor(anchor / beat);
  const Seconds first = anchor - before * beat;
  const double count = std::floor((length - first) / beat) + 1;
  if (!(count >= 2 && count <= kMostBeats) || !std::isfinite(before)) return {};
  std::vector<Seconds> beats(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < beats.size(); ++i) {
    beats[i] = anchor + (static_cast<double>(i) - before) * beat;
  }
  return {TempoOf(beat), confidence, std::move(beats)};
}

std::size_t BeatGrid::IntervalOf(Seconds time) const {
  const auto after = std::upper_bound(beats_.begin() + 1, beats_.end() - 1, time);
  return static_cast<std::size_t>(after - beats_.begin()) - 1;
}

double BeatGrid::BeatAt(Seconds time) const {
  if (Empty()) return 0;
  const std::size_t interval = IntervalOf(time);
  return static_cast<double>(interval) + (time - beats_[interval]) / Width(interval);
}

Seconds BeatGrid::TimeOf(double beat) const {
  if (Empty()) return {};
  const double last = static_cast<double>(beats_.size()) - 2;
  const double interval = std::clamp(std::floor(beat), 0.0, last);
  const auto place = static_cast<std::size_t>(interval);
  return beats_[place] + (beat - interval) * Width(place);
}

double BeatGrid::PhaseAt(Seconds time) const {
  const double beat = BeatAt(time);
  return std::clamp(beat - std::floor(beat), 0.0, std::nextafter(1.0, 0.0));
}

Seconds BeatGrid::NextBeat(Seconds time) const {
  if (Empty()) return time;
  // What was computed from a beat may lie a rounding error before it.
  constexpr double kSameBeat = 1e-9;
  return TimeOf(std::floor(BeatAt(time) + kSameBeat) + 1);
}

Seconds BeatGrid::NearestBeat(Seconds time) const {
  return Empty() ? time : TimeOf(std::round(BeatAt(time)));
}

support::Bpm BeatGrid::TempoAt(Seconds time) const {
  return Empty() ? support::Bpm{} : TempoOf(Width(IntervalOf(time)));
}

BeatGrid BeatGrid::ScaledBy(BeatScale scale) const {
  const double factor = FactorOf(scale);
  std::vector<Seconds> beats;
  const double last = static_cast<double>(beats_.size()) - 1;
  for (int i = 0; !Empty() && i / factor <= last; ++i) beats.push_back(TimeOf(i / factor));
  return {{nominal_.value * factor}, confidence_, std::move(beats)};
}

BeatGrid BeatGrid::ShiftedBy(Seconds time) const {
  BeatGrid shifted = *this;
  for (Seconds& beat : shifted.beats_) beat += time;
  return shifted;
}

BeatGrid BeatGrid::RetimedTo(support::Bpm tempo, Seconds anchor, Seconds length) const {
  return Even(tempo, 1, NearestBeat(anchor), length);
}

}  // namespace music
