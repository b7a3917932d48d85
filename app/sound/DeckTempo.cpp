// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/DeckTempo.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace app {
namespace {

using music::Seconds;

constexpr std::chrono::seconds kTapsForgotten{2};
constexpr std::size_t kFewestTaps = 4;
constexpr std::size_t kMostTaps = 16;

/// The pace of the straight line through the taps: one that came late weighs less than between two ends.
Seconds BeatOf(const std::vector<support::TimePoint>& taps) {
  const double middle = static_cast<double>(taps.size() - 1) / 2;
  double product = 0;
  double square = 0;
  for (std::size_t i = 0; i < taps.size(); ++i) {
    const double number = static_cast<double>(i) - middle;
    product += number * Seconds(taps[i] - taps.front()).count();
    square += number * number;
  }
  return Seconds(product / square);
}

}  // namespace

void DeckTempo::Set(const decks::TempoSliders& sliders) {
  if (decks::Playable(sliders).percent != sliders_.percent) Keep();
  Order(sliders);
}

void DeckTempo::Order(const decks::TempoSliders& sliders) {
  sliders_ = decks::Playable(sliders);
  const int rate = heard_.sample_rate;
  decks::SetTempo(engine_, player_.STRM(), sliders_, bend_ * nudge_, rate);
  decks::SetTempo(engine_, player_.PreSTRM(), sliders_, bend_ * nudge_, rate);
}

void DeckTempo::Nudge(double factor) {
  nudge_ = std::isfinite(factor) ? std::clamp(factor, 0.8, 1.25) : 1;
  Set(sliders_);
}

void DeckTempo::Bend(double factor) {
  bend_ = factor;
  Set(sliders_);
}

void DeckTempo::Follow(double speed, double bend) {
  decks::TempoSliders sliders = sliders_;
  sliders.percent = (speed / (1 + sliders.sample_percent / 100) - 1) * 100;
  // An order that nobody could hear is none: every one of them is work for the feeder.
  constexpr double kSame = 1e-5;
  if (std::abs(sliders.percent - sliders_.percent) < kSame * 100 && std::abs(bend - bend_) < kSame) return;
  bend_ = bend;
  Order(sliders);
}

void DeckTempo::Borrow() {
  if (!own_percent_) own_percent_ = sliders_.percent;
}

void DeckTempo::GiveBack(double percent) {
  if (!own_percent_) return;
  decks::TempoSliders sliders = sliders_;
  sliders.percent += std::clamp(*own_percent_ - sliders.percent, -percent, percent);
  if (sliders.percent == *own_percent_) own_percent_.reset();
  Order(sliders);
}

decks::BeatSide DeckTempo::Side() const {
  constexpr double kLockedBend = 0.04;
  constexpr double kUnlockedBend = 0.01;
  return {.grid = grid_.get(),
          .bpm = Bpm(),
          .heard = Place(),
          .speed = Speed(),
          .bend = bend_ * nudge_,
          .playing = heard_.playing,
          .most_bend = sliders_.key_lock == decks::KeyLock::On ? kLockedBend : kUnlockedBend};
}

bool DeckTempo::Original() const {
  return Speed() == 1 && sliders_.semitones == 0 && sliders_.sample_percent == 0;
}

void DeckTempo::Begin(double bpm) {
  ++track_;
  begun_bpm_ = bpm;
  ForgetCorrections();
  bend_ = 1;
  nudge_ = 1;
  if (own_percent_) sliders_.percent = *std::exchange(own_percent_, std::nullopt);
}

void DeckTempo::ForgetCorrections() {
  row_bpm_ = begun_bpm_;
  grid_.reset();
  by_hand_ = false;
  corrected_ = false;
  taps_.clear();
}

void DeckTempo::Apply() {
  if (!Original()) Set(sliders_);
}

void DeckTempo::Heard(const decks::HeardStream& heard) {
  const bool other_rate = heard.sample_rate != heard_.sample_rate;
  heard_ = heard;
  if (other_rate) Apply();
}

Seconds DeckTempo::Place() const {
  if (heard_.sample_rate <= 0) return {};
  return Seconds(static_cast<double>(heard_.frame.value) / heard_.sample_rate);
}

Seconds DeckTempo::Length() const {
  if (heard_.sample_rate <= 0) return {};
  return Seconds(static_cast<double>(heard_.length.value) / heard_.sample_rate);
}

void DeckTempo::Found(std::shared_ptr<const music::BeatGrid> grid) {
  if (!by_hand_) grid_ = std::move(grid);
}

double DeckTempo::Bpm() const {
  if (by_hand_ && grid_ != nullptr && !grid_->Empty()) return grid_->Nominal().value;
  if (row_bpm_ > 0) return row_bpm_;
  return grid_ == nullptr ? 0 : grid_->Nominal().value;
}

void DeckTempo::Correct(music::BeatGrid grid) {
  if (grid.Empty()) return;
  grid_ = std::make_shared<const music::BeatGrid>(std::move(grid));
  by_hand_ = true;
  corrected_ = true;
}

void DeckTempo::Kept(std::shared_ptr<const music::BeatGrid> grid) {
  if (by_hand_ || grid == nullptr || grid->Empty()) return;
  grid_ = std::move(grid);
  by_hand_ = true;
}

std::shared_ptr<const music::BeatGrid> DeckTempo::TakeCorrection() {
  return std::exchange(corrected_, false) ? grid_ : nullptr;
}

void DeckTempo::Tap(support::TimePoint at) {
  if (!taps_.empty() && at - taps_.back() > kTapsForgotten) taps_.clear();
  if (!taps_.empty() && at <= taps_.back()) return;
  if (taps_.size() == kMostTaps) taps_.erase(taps_.begin());
  taps_.push_back(at);
  if (taps_.size() < kFewestTaps) return;
  const double heard_bpm = 60 / BeatOf(taps_).count();
  row_bpm_ = heard_bpm / Speed();
  const music::BeatGrid none;
  const music::BeatGrid& grid = grid_ == nullptr ? none : *grid_;
  Correct(grid.RetimedTo({row_bpm_}, Place(), Length()));
}

void DeckTempo::Scale(music::BeatScale scale) {
  constexpr double kFactors[] = {2, 0.5, 2.0 / 3, 1.5};
  row_bpm_ *= kFactors[static_cast<std::size_t>(scale)];
  if (grid_ != nullptr) Correct(grid_->ScaledBy(scale));
}

void DeckTempo::Shift(Seconds time) {
  if (grid_ != nullptr) Correct(grid_->ShiftedBy(time));
}

void DeckTempo::Align() {
  if (grid_ != nullptr && !grid_->Empty()) return Shift(Place() - grid_->NearestBeat(Place()));
  if (row_bpm_ > 0) Correct(music::BeatGrid::Even({row_bpm_}, 1, Place(), Length()));
}

std::optional<std::chrono::microseconds> DeckTempo::NearestBeat() const {
  if (grid_ == nullptr || grid_->Empty()) return std::nullopt;
  return std::chrono::round<std::chrono::microseconds>(
      std::max(grid_->NearestBeat(Place()), music::Seconds(0)));
}

void DeckTempo::Show(DeckView& view) const {
  view.bpm = Bpm();
  view.playing_bpm = view.bpm * (heard_.playing ? heard_.ratio : Speed());
  view.tempo_percent = static_cast<float>(sliders_.percent);
  view.pitch = static_cast<float>(sliders_.semitones);
  view.sample_percent = static_cast<float>(sliders_.sample_percent);
  view.key_lock = sliders_.key_lock;
  view.tempo_range = range_;
  view.grid = grid_;
}

}  // namespace app
