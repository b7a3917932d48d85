// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/KeyFinder.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace decks {
namespace {

constexpr double kLowest = 65, kHighest = 2100;  // Hz
constexpr double kFrame = 0.37;                  ///< at least so many seconds of sound in a spectrum
constexpr float kPeakOverMedian = 4 * 4;         ///< in power
constexpr float kSilence = 1e-5F;                ///< of a bin's power
constexpr double kReach = 0.2;                   ///< in semitones: so far off, a peak counts for less

// What the gates want before a key is claimed.
constexpr double kFewestTonalSeconds = 5;
constexpr double kLeastTuned = 0.08;  ///< of the strength: what agrees about the tuning
constexpr double kHeardTone = 0.15;   ///< of the strongest tone
constexpr int kFewestTones = 4;
constexpr double kLeastLikeness = 0.65;
constexpr double kSureBy = 0.25;  ///< likeness ahead of the next key that is beyond doubt
constexpr double kLeastConfidence = 0.05;

using Chroma = KeyFinder::Chroma;
constexpr Chroma kMajor{6.6, 2.0, 3.5, 2.3, 4.6, 4.0, 2.5, 5.2, 2.4, 3.7, 2.3, 3.4};
constexpr Chroma kMinor{6.5, 2.7, 3.5, 5.4, 2.6, 3.5, 2.5, 5.2, 4.0, 2.7, 4.3, 3.2};

std::size_t FrameFor(double sample_rate) {
  std::size_t size = 256;
  while (static_cast<double>(size) < kFrame * sample_rate) size *= 2;
  return size;
}

/// Correlation of what was heard with a profile that begins at the tonic.
double Likeness(const Chroma& heard, const Chroma& profile, std::size_t tonic) {
  double heard_mean = 0, profile_mean = 0;
  for (std::size_t i = 0; i < heard.size(); ++i) heard_mean += heard[i] / 12, profile_mean += profile[i] / 12;
  double product = 0, heard_power = 0, profile_power = 0;
  for (std::size_t i = 0; i < heard.size(); ++i) {
    const double a = heard[(i + tonic) % heard.size()] - heard_mean, b = profile[i] - profile_mean;
    product += a * b;
    heard_power += a * a;
    profile_power += b * b;
  }
  return product / std::sqrt(heard_power * profile_power + 1e-12);
}

}  // namespace

KeyFinder::KeyFinder(double sample_rate)
    : bin_hz_(sample_rate / static_cast<double>(FrameFor(sample_rate))),
      feed_(FrameFor(sample_rate), FrameFor(sample_rate)),
      first_bin_(static_cast<std::size_t>(std::max(1.0, kLowest / bin_hz_))),
      end_bin_(std::min(static_cast<std::size_t>(kHighest / bin_hz_), FrameFor(sample_rate) / 2 - 1)),
      frame_seconds_(1 / bin_hz_) {}

void KeyFinder::Add(std::span<const float> samples) {
  feed_.Add(samples, [this](std::span<const float> power) { AddFrame(power); });
}

void KeyFinder::AddFrame(std::span<const float> power) {
  if (first_bin_ >= end_bin_) return;
  sorted_.assign(power.begin() + static_cast<std::ptrdiff_t>(first_bin_),
                 power.begin() + static_cast<std::ptrdiff_t>(end_bin_));
  const auto middle = sorted_.begin() + static_cast<std::ptrdiff_t>(sorted_.size() / 2);
  std::nth_element(sorted_.begin(), middle, sorted_.end());
  const float least = std::max(kPeakOverMedian * *middle, kSilence);
  bool tonal = false;
  for (std::size_t bin = first_bin_; bin < end_bin_; ++bin) {
    const float before = power[bin - 1], here = power[bin], after = power[bin + 1];
    if (!(here > least && here > before && here >= after)) continue;
    // A parabola through the logarithms.
    const double left = std::log(static_cast<double>(before) + 1e-12),
                 top = std::log(static_cast<double>(here)),
                 right = std::log(static_cast<double>(after) + 1e-12);
    const double bend = left - 2 * top + right;
    const double off = bend < 0 ? std::clamp(0.5 * (left - right) / bend, -0.5, 0.5) : 0;
    AddPeak((static_cast<double>(bin) + off) * bin_hz_, std::sqrt(static_cast<double>(here)));
    tonal = true;
  }
  if (tonal) tonal_seconds_ += frame_seconds_;
}

void KeyFinder::AddPeak(double hertz, double strength) {
  const double note = 69 + 12 * std::log2(hertz / 440);
  const double turn = 2 * std::numbers::pi * note;
  turned_re_ += strength * std::cos(turn);
  turned_im_ += strength * std::sin(turn);
  strength_ += strength;
  const double tone = note - 12 * std::floor(note / 12);
  const auto place = static_cast<std::size_t>(tone * kPlacesPerTone);
  octave_[std::min(place, octave_.size() - 1)] += std::sqrt(strength);
}

double KeyFinder::Tuning() const {
  return std::atan2(turned_im_, turned_re_) / (2 * std::numbers::pi);
}

KeyFinder::Chroma KeyFinder::TonesIn(double tuning) const {
  Chroma tones{};
  for (std::size_t place = 0; place < octave_.size(); ++place) {
    const double note = (static_cast<double>(place) + 0.5) / kPlacesPerTone - tuning;
    const double nearest = std::round(note);
    const double off = (note - nearest) / kReach;
    const auto tone = static_cast<std::size_t>(static_cast<long>(nearest) + 12) % kTones;
    tones[tone] += octave_[place] * std::exp(-0.5 * off * off);
  }
  return tones;
}

std::optional<FoundKey> KeyFinder::Finish() const {
  if (tonal_seconds_ < kFewestTonalSeconds) return std::nullopt;
  if (std::hypot(turned_re_, turned_im_) < kLeastTuned * strength_) return std::nullopt;
  const Chroma tones = TonesIn(Tuning());
  const double strongest = *std::max_element(tones.begin(), tones.end());
  const auto heard =
      std::count_if(tones.begin(), tones.end(), [&](double tone) { return tone > kHeardTone * strongest; });
  if (heard < kFewestTones) return std::nullopt;
  std::array<double, music::kMusicalKeys> like{};
  for (int number = 0; number < music::kMusicalKeys; ++number) {
    const auto key = *music::KeyOfNumber(number);
    like[static_cast<std::size_t>(number)] =
        Likeness(tones, key.minor ? kMinor : kMajor, static_cast<std::size_t>(key.tonic));
  }
  const auto found = std::max_element(like.begin(), like.end());
  const double best = *found;
  const auto key = *music::KeyOfNumber(static_cast<int>(found - like.begin()));
  // Its relative has the same tones and the same place on the wheel: no doubt to speak of.
  like[static_cast<std::size_t>(
      NumberOf(music::MusicalKey{(key.tonic + (key.minor ? 3 : 9)) % 12, !key.minor}))] = -1;
  *found = -1;
  const double second = *std::max_element(like.begin(), like.end());
  const double confidence = std::clamp((best - second) / kSureBy, 0.0, 1.0);
  if (best < kLeastLikeness || confidence < kLeastConfidence) return std::nullopt;
  return FoundKey{key, confidence};
}

}  // namespace decks
