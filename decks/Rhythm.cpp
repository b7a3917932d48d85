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

std::vector<float> RisesOf(const music::Wave& wave, std::uint8_t music::WaveColumn::*field) {
  std::vector<float> rises(wave.fine.size());
  double sum = 0;
  float before = 0;
  for (std::size_t i = 0; i < rises.size(); ++i) {
    const float level = std::sqrt(static_cast<float>(wave.fine[i].*field));
    rises[i] = std::max(0.0F, level - before);
    before = level;
    sum += static_cast<double>(rises[i]);
  }
  const auto mean = static_cast<float>(sum / std::max<double>(1, static_cast<double>(rises.size())));
  for (float& rise : rises) rise = mean > 0 ? rise / mean - 1 : 0;
  return rises;
}

}  // namespace

Rhythm::Rhythm(const music::Wave& wave)
    : rises_{RisesOf(wave, &music::WaveColumn::low), RisesOf(wave, &music::WaveColumn::mid),
             RisesOf(wave, &music::WaveColumn::high)} {}

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
