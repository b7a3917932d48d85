// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/GridFit.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <span>

namespace decks {
namespace {

using music::Seconds;

constexpr std::size_t kFewestBeats = 8;
/// Stretches over which the phase of an even grid has to stay the same.
constexpr Seconds kStretch{12};

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Onsets as a function of time whose strength at a frequency can be asked.
class OnsetCurve {
 public:
  explicit OnsetCurve(const TrackedBeats& heard)
      : start_(heard.onset_start), step_(heard.onset_step), values_(heard.onsets) {
    double mean = 0;
    for (const float value : values_) mean += value;
    mean /= std::max<double>(1, static_cast<double>(values_.size()));
    for (float& value : values_) value = std::sqrt(value) - static_cast<float>(std::sqrt(mean));
  }

  /// Of a stretch of the curve; the angle is the phase at time 0.
  [[nodiscard]] std::complex<double> At(double frequency, std::size_t from, std::size_t to) const {
    const double turn = -2 * std::numbers::pi * frequency;
    std::complex<double> at = std::polar(1.0, turn * (start_ + static_cast<double>(from) * step_).count());
    const std::complex<double> further = std::polar(1.0, turn * step_.count());
    std::complex<double> sum = 0;
    for (std::size_t i = from; i < to; ++i, at *= further) sum += static_cast<double>(values_[i]) * at;
    return sum;
  }
  [[nodiscard]] std::complex<double> At(double frequency) const { return At(frequency, 0, values_.size()); }
  [[nodiscard]] std::size_t Size() const { return values_.size(); }
  [[nodiscard]] Seconds Step() const { return step_; }

 private:
  Seconds start_;
  Seconds step_;
  std::vector<float> values_;
};

/// How well beats at a frequency, and at its first multiples, answer to the curve.
double Strength(const OnsetCurve& curve, double frequency) {
  double sum = 0;
  for (const int multiple : {1, 2, 4}) sum += std::abs(curve.At(frequency * multiple));
  return sum;
}

/// The frequency near the given one where the strength is highest.
double Sharpened(const OnsetCurve& curve, double frequency, double reach) {
  const double length = (static_cast<double>(curve.Size()) * curve.Step()).count();
  for (double step = 0.1 / length; step > 0.0005 / length; step /= 4) {
    double best = frequency;
    double highest = Strength(curve, frequency);
    for (double f = frequency - reach; f <= frequency + reach; f += step) {
      const double strength = Strength(curve, f);
      if (strength > highest) highest = strength, best = f;
    }
    frequency = best;
    reach = 2 * step;
  }
  return frequency;
}

/// 1 when every stretch of the track has the phase of the whole, about 0 when they have any.
double Steadiness(const OnsetCurve& curve, double frequency) {
  const auto stretch = static_cast<std::size_t>(kStretch / curve.Step());
  const std::complex<double> whole = curve.At(frequency);
  if (stretch == 0 || std::abs(whole) == 0) return 0;
  double along = 0;
  double all = 0;
  for (std::size_t from = 0; from + stretch / 2 < curve.Size(); from += stretch) {
    const auto part = curve.At(frequency, from, std::min(curve.Size(), from + stretch));
    along += (part * std::conj(whole)).real() / std::abs(whole);
    all += std::abs(part);
  }
  return all > 0 ? std::max(0.0, along / all) : 0;
}

}  // namespace

music::BeatGrid FitGrid(const TrackedBeats& heard, const music::Wave& /*wave*/, Seconds length) {
  if (heard.beats.size() < kFewestBeats || heard.onset_step.count() <= 0) return {};
  std::vector<double> gaps;
  for (std::size_t i = 1; i < heard.beats.size(); ++i) {
    gaps.push_back((heard.beats[i] - heard.beats[i - 1]).count());
  }
  const double gap = Median(std::move(gaps));
  if (!(gap > music::BeatGrid::kShortestBeat.count())) return {};
  const OnsetCurve curve(heard);
  const double frequency = Sharpened(curve, 1 / gap, 0.04 / gap);
  const double steady = Steadiness(curve, frequency);
  constexpr double kEven = 0.8;
  if (steady < kEven) return {{}, steady, heard.beats};
  const double phase = -std::arg(curve.At(frequency)) / (2 * std::numbers::pi * frequency);
  return music::BeatGrid::Even({60 * frequency}, steady, Seconds(phase), length);
}

}  // namespace decks
