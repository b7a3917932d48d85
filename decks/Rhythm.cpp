// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/Rhythm.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace decks {
namespace {

/// A column's rise belongs to its middle.
constexpr double kMiddle = 0.5;

/// Adds what the band rises in a second, in units of its level, to the liveliness.
std::vector<float> RisesOf(const music::Wave& wave, std::uint8_t music::WaveColumn::*field,
                           double& liveliness) {
  std::vector<float> rises(wave.fine.size());
  double sum = 0;
  double levels = 0;
  float before = 0;
  for (std::size_t i = 0; i < rises.size(); ++i) {
    const float level = std::sqrt(static_cast<float>(wave.fine[i].*field));
    rises[i] = std::max(0.0F, level - before);
    before = level;
    sum += static_cast<double>(rises[i]);
    levels += static_cast<double>(level);
  }
  if (levels > 0) liveliness += music::Wave::kColumnsASecond * sum / levels;
  const auto mean = static_cast<float>(sum / std::max<double>(1, static_cast<double>(rises.size())));
  for (float& rise : rises) rise = mean > 0 ? rise / mean - 1 : 0;
  return rises;
}

}  // namespace

Rhythm::Rhythm(const music::Wave& wave)
    : rises_{RisesOf(wave, &music::WaveColumn::low, liveliness_),
             RisesOf(wave, &music::WaveColumn::mid, liveliness_),
             RisesOf(wave, &music::WaveColumn::high, liveliness_)} {}

Rhythm::Stretch Rhythm::Middle(music::Seconds longest) const {
  const std::size_t all = rises_[kLow].size();
  const std::size_t size =
      std::min(all, static_cast<std::size_t>(longest.count() * music::Wave::kColumnsASecond));
  return {(all - size) / 2, (all - size) / 2 + size};
}

std::complex<double> Rhythm::At(Band band, double frequency, const Stretch& stretch) const {
  const double turn = -2 * std::numbers::pi * frequency / music::Wave::kColumnsASecond;
  const std::complex<float> further(std::polar(1.0, turn));
  const std::vector<float>& rises = rises_[band];
  std::complex<double> sum = 0;
  constexpr std::size_t kRun = 256;  // short enough for the turning to stay exact
  for (std::size_t from = stretch.from; from < stretch.to; from += kRun) {
    std::complex<float> at(std::polar(1.0, turn * (static_cast<double>(from) + kMiddle)));
    std::complex<float> run = 0;
    const std::size_t to = std::min(stretch.to, from + kRun);
    for (std::size_t i = from; i < to; ++i) {
      run += rises[i] * at;
      at = {at.real() * further.real() - at.imag() * further.imag(),
            at.real() * further.imag() + at.imag() * further.real()};
    }
    sum += std::complex<double>(run);
  }
  return sum / std::max<double>(1, static_cast<double>(stretch.to - stretch.from));
}

double Rhythm::Evidence(Band band, double frequency, const Stretch& stretch) const {
  double squares = 0;
  for (std::size_t i = stretch.from; i < stretch.to; ++i) {
    squares += static_cast<double>(rises_[band][i] * rises_[band][i]);
  }
  const auto columns = static_cast<double>(stretch.to - stretch.from);
  return squares > 0 ? std::norm(At(band, frequency, stretch)) * columns * columns / squares : 0;
}

double Rhythm::EvidenceAlong(Band band, std::span<const music::Seconds> beats) const {
  std::complex<double> sum = 0;
  double squares = 0;
  std::size_t beat = 0;
  for (std::size_t i = 0; i < rises_[band].size() && beats.size() > 1; ++i) {
    const music::Seconds at((static_cast<double>(i) + kMiddle) / music::Wave::kColumnsASecond);
    while (beat + 2 < beats.size() && beats[beat + 1] <= at) ++beat;
    if (at < beats.front() || at > beats.back()) continue;
    const double phase = (at - beats[beat]) / (beats[beat + 1] - beats[beat]);
    const auto rise = static_cast<double>(rises_[band][i]);
    sum += std::polar(1.0, 2 * std::numbers::pi * phase) * rise;
    squares += rise * rise;
  }
  const double seconds = static_cast<double>(rises_[band].size()) / music::Wave::kColumnsASecond;
  return squares > 0 ? std::norm(sum) / squares / seconds : 0;
}

double Rhythm::PulseAt(double frequency, const Stretch& stretch) const {
  double sum = 0;
  for (const Band band : {kLow, kMid, kHigh}) {
    for (const int multiple : {1, 2, 4}) sum += Share(band, multiple * frequency, stretch);
  }
  return sum;
}

std::array<double, Rhythm::kPlaces> Rhythm::Folded(Band band, double frequency) const {
  std::array<double, kPlaces> folded{};
  const double columns = static_cast<double>(rises_[band].size());
  for (std::size_t i = 0; i < rises_[band].size(); ++i) {
    const double beat = (static_cast<double>(i) + kMiddle) * frequency / music::Wave::kColumnsASecond;
    const auto place = static_cast<std::size_t>((beat - std::floor(beat)) * kPlaces);
    folded[std::min<std::size_t>(place, kPlaces - 1)] +=
        static_cast<double>(rises_[band][i]) * kPlaces / columns;
  }
  return folded;
}

}  // namespace decks
