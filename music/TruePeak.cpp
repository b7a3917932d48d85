// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/TruePeak.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

namespace music {
namespace {

int PlacesFor(int sample_rate) {
  constexpr int kTwice = 96'000;
  constexpr int kNotAtAll = 192'000;
  if (sample_rate >= kNotAtAll) return 0;
  return sample_rate >= kTwice ? 1 : 3;
}

/// A sine over its argument under a window, for the place that is a fraction of a sample past the middle.
template <std::size_t kTaps>
std::array<float, kTaps> FilterFor(double fraction) {
  std::array<float, kTaps> filter{};
  double sum = 0;
  for (std::size_t i = 0; i < kTaps; ++i) {
    const double at = std::numbers::pi * (static_cast<double>(i) - (kTaps / 2 - 1) - fraction);
    const double window = std::cos(at / kTaps);
    filter[i] = static_cast<float>(std::sin(at) / at * window * window);
    sum += filter[i];
  }
  for (float& tap : filter) tap /= static_cast<float>(sum);
  return filter;
}

}  // namespace

TruePeak::TruePeak(int sample_rate, int channels)
    : channels_(static_cast<std::size_t>(channels)), lines_(channels_) {
  assert(sample_rate > 0 && channels > 0 && "a file has a rate and channels");
  const int places = PlacesFor(sample_rate);
  for (int place = 1; place <= places; ++place) {
    places_.push_back(FilterFor<kTaps>(static_cast<double>(place) / (places + 1)));
    float gain = 0;
    for (const float tap : places_.back()) gain += std::abs(tap);
    largest_gain_ = std::max(largest_gain_, gain);
  }
}

void TruePeak::Add(std::span<const std::int16_t> samples) {
  const std::size_t block = kBlock * channels_;
  if (!rest_.empty()) {
    const std::size_t missing = std::min(block - rest_.size(), samples.size());
    rest_.insert(rest_.end(), samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(missing));
    samples = samples.subspan(missing);
    if (rest_.size() < block) return;
    Block(rest_, kBlock);
    rest_.clear();
  }
  for (; samples.size() >= block; samples = samples.subspan(block)) Block(samples, kBlock);
  rest_.assign(samples.begin(), samples.end());
}

void TruePeak::Block(std::span<const std::int16_t> samples, std::size_t frames) {
  for (std::size_t channel = 0; channel < channels_; ++channel) {
    Line& line = lines_[channel];
    float* const fresh = line.data() + kTaps;
    for (std::size_t i = 0; i < frames; ++i) fresh[i] = samples[i * channels_ + channel];
    float loudest = 0;
    for (std::size_t i = 0; i < kTaps + frames; ++i) loudest = std::max(loudest, std::abs(line[i]));
    if (loudest * largest_gain_ > peak_) {
      for (std::size_t i = 0; i < frames; ++i) peak_ = std::max(peak_, std::abs(fresh[i]));
      Interpolate(line, frames);
    }
    std::copy(line.begin() + static_cast<std::ptrdiff_t>(frames),
              line.begin() + static_cast<std::ptrdiff_t>(frames + kTaps), line.begin());
  }
}

void TruePeak::Interpolate(const Line& line, std::size_t frames) {
  for (const auto& filter : places_) {
    std::array<float, kBlock> between{};
    for (std::size_t tap = 0; tap < kTaps; ++tap) {
      const float* const from = line.data() + 1 + tap;
      for (std::size_t i = 0; i < frames; ++i) between[i] += filter[tap] * from[i];
    }
    for (std::size_t i = 0; i < frames; ++i) peak_ = std::max(peak_, std::abs(between[i]));
  }
}

support::Decibels TruePeak::Finish() {
  constexpr float kSilence = -120;
  std::vector<std::int16_t> tail(std::move(rest_));
  tail.resize((tail.size() / channels_ + kTaps) * channels_);  // the last samples pass through the filters
  rest_.clear();
  for (std::span<const std::int16_t> left = tail; !left.empty();) {
    const std::size_t frames = std::min(kBlock, left.size() / channels_);
    Block(left, frames);
    left = left.subspan(frames * channels_);
  }
  return {peak_ > 0 ? std::max(kSilence, 20 * std::log10(peak_ / 32768)) : kSilence};
}

}  // namespace music
