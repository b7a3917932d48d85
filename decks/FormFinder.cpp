// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/FormFinder.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace decks {
namespace {

constexpr double kShortFrame = 0.07;                       ///< at least so many seconds in a spectrum
constexpr double kLowestBand = 40, kHighestBand = 10'000;  // Hz
constexpr double kStepsPerNeper = 20 / 2.302585093;        ///< half decibels of a power
constexpr double kFloorSteps = 80;                         ///< -40 dB and less is silence
constexpr double kDifferent = 0.5;                         ///< between two bars and the next two, as nepers
constexpr int kFewestChanges = 2;
constexpr double kUnproven = 0.5;
constexpr std::size_t kBarReach = 8;  ///< beats before and after
constexpr std::size_t kFewestBeats = 48;

std::size_t FrameFor(double sample_rate, double seconds) {
  std::size_t size = 256;
  while (static_cast<double>(size) < seconds * sample_rate) size *= 2;
  return size;
}

/// How much the beats before this one differ from those from it on; 0 where there are not enough.
double DistanceAt(std::span<const BeatSound> beats, std::size_t at) {
  if (at < kBarReach || at + kBarReach > beats.size()) return 0;
  double sum = 0;
  for (std::size_t band = 0; band < kFormBands; ++band) {
    float before = 0, after = 0;
    for (std::size_t k = 0; k < kBarReach; ++k) {
      before += beats[at - 1 - k][band];
      after += beats[at + k][band];
    }
    const double change = static_cast<double>(after - before) / kBarReach;
    sum += change * change;
  }
  return std::sqrt(sum / kFormBands);
}

using Votes = std::array<double, music::kBeatsPerBar>;
using Counts = std::array<int, music::kBeatsPerBar>;

/// Where what plays changes: at the beginning of a bar, mostly. The greatest changes tell most, but fewer
/// than kFewestChanges that agree are no proof.
Votes VotesOfChanges(std::span<const BeatSound> beats, Counts& great) {
  Votes votes{};
  double all = 0;
  std::vector<double> distance(beats.size() + 1);
  for (std::size_t i = 0; i < beats.size(); ++i) distance[i] = DistanceAt(beats, i);
  const double most = *std::max_element(distance.begin(), distance.end());
  for (std::size_t i = kBarReach; i + kBarReach < beats.size(); ++i) {
    if (distance[i] <= kDifferent || distance[i] < std::max(distance[i - 1], distance[i + 1])) continue;
    votes[i % votes.size()] += std::pow(distance[i], 4);
    all += std::pow(distance[i], 4);
    if (distance[i] > most / 2) ++great[i % votes.size()];
  }
  for (double& vote : votes) vote = all > 0 ? vote / all : 0;
  return votes;
}

/// Where chords change, against the mean.
Votes VotesOfSteps(std::span<const BeatSound> beats) {
  Votes votes{};
  double all = 0;
  for (std::size_t i = 1; i + 1 < beats.size(); ++i) {
    double change = 0;
    for (std::size_t band = 0; band < kFormBands; ++band)
      change += static_cast<double>(std::fabs(beats[i][band] - beats[i - 1][band]));
    votes[i % votes.size()] += change;
    all += change;
  }
  for (double& vote : votes) vote = all > 0 ? 4 * vote / all - 1 : 0;
  return votes;
}

}  // namespace

FormFinder::FormFinder(double sample_rate)
    : feed_(FrameFor(sample_rate, kShortFrame), FrameFor(sample_rate, kShortFrame) / 2),
      step_seconds_(0.5 * static_cast<double>(FrameFor(sample_rate, kShortFrame)) / sample_rate),
      middle_seconds_(step_seconds_) {
  const double bin_hz = 0.5 / step_seconds_;
  const std::size_t bins = FrameFor(sample_rate, kShortFrame) / 2;
  for (std::size_t band = 0; band <= kFormBands; ++band) {
    const double share = static_cast<double>(band) / kFormBands;
    const double edge = kLowestBand * std::pow(kHighestBand / kLowestBand, share) / bin_hz;
    edges_[band] = std::min(static_cast<std::size_t>(std::ceil(edge)), bins);
  }
}

void FormFinder::Add(std::span<const float> samples) {
  feed_.Add(samples, [this](std::span<const float> power) { AddFrame(power); });
}

void FormFinder::AddFrame(std::span<const float> power) {
  auto& frame = frames_.emplace_back();
  for (std::size_t band = 0; band < kFormBands; ++band) {
    float sum = 1e-6F;
    for (std::size_t bin = edges_[band]; bin < edges_[band + 1]; ++bin) sum += power[bin];
    const double steps = std::log(static_cast<double>(sum)) * kStepsPerNeper + kFloorSteps;
    frame[band] = static_cast<std::uint8_t>(std::clamp(steps, 0.0, 255.0));
  }
}

std::vector<BeatSound> FormFinder::BeatsOn(const music::BeatGrid& grid) const {
  std::vector<BeatSound> sounds;
  std::array<float, 256> power;
  for (std::size_t i = 0; i < power.size(); ++i)
    power[i] = static_cast<float>(std::exp((static_cast<double>(i) - kFloorSteps) / kStepsPerNeper));
  const std::vector<music::Seconds>& beats = grid.Beats();
  const auto frame_at = [this](music::Seconds time) {
    // A frame answers to a stroke at its beginning with half of its window.
    const double place = (time.count() - middle_seconds_) / step_seconds_ + 0.5;
    return static_cast<std::size_t>(std::clamp(std::ceil(place), 0.0, static_cast<double>(frames_.size())));
  };
  for (std::size_t beat = 0; beat + 1 < beats.size(); ++beat) {
    const std::size_t from = frame_at(beats[beat]), to = frame_at(beats[beat + 1]);
    if (from >= to) break;
    BeatSound sum{};
    for (std::size_t i = from; i < to; ++i) {
      for (std::size_t band = 0; band < kFormBands; ++band) sum[band] += power[frames_[i][band]];
    }
    for (float& band : sum) band = std::log(band / static_cast<float>(to - from));
    sounds.push_back(sum);
  }
  return sounds;
}

std::optional<BarPhase> FindBars(std::span<const BeatSound> beats) {
  if (beats.size() < kFewestBeats) return std::nullopt;
  Counts great{};
  const Votes changes = VotesOfChanges(beats, great), steps = VotesOfSteps(beats);
  Votes score{};
  for (std::size_t i = 0; i < score.size(); ++i) score[i] = changes[i] + 0.5 * steps[i];
  const auto best = std::max_element(score.begin(), score.end());
  const int beat = static_cast<int>(best - score.begin());
  std::nth_element(score.begin(), score.begin() + 1, score.end(), std::greater<>());
  // One change alone is no proof of where bars begin.
  const double most = great[static_cast<std::size_t>(beat)] < kFewestChanges ? kUnproven : 1;
  return BarPhase{beat, std::clamp(score[0] - score[1], 0.0, most)};
}

}  // namespace decks
