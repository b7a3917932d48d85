// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/MonoFeed.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

namespace music {
namespace {

/// A windowed low pass at nine tenths of half the output rate; its gain at 0 Hz is that of a mean that is
/// taken down from 16 bits.
std::vector<float> LowPass(std::size_t factor, std::size_t channels) {
  const std::size_t reach = factor > 1 ? 6 * factor : 0;
  std::vector<float> filter(2 * reach + 1, 1.0F);
  double sum = 0;
  for (std::size_t i = 0; i < filter.size(); ++i) {
    const double at = std::numbers::pi * (static_cast<double>(i) - static_cast<double>(reach));
    const double edge = at * 0.9 / static_cast<double>(factor);
    const double window = std::cos(at / (2 * static_cast<double>(reach) + 2));
    filter[i] = static_cast<float>((edge == 0 ? 1 : std::sin(edge) / edge) * window * window);
    sum += filter[i];
  }
  for (float& tap : filter) tap /= static_cast<float>(sum * 32768 * static_cast<double>(channels));
  return filter;
}

}  // namespace

MonoFeed::MonoFeed(int sample_rate, int channels)
    : sample_rate_(sample_rate),
      channels_(static_cast<std::size_t>(channels)),
      factor_(static_cast<std::size_t>(std::max(1, sample_rate / kTargetRate))),
      filter_(LowPass(factor_, channels_)),
      line_(filter_.size() / 2) {
  assert(sample_rate > 0 && channels > 0 && "a file has a rate and channels");
}

double MonoFeed::OutputRate() const {
  return static_cast<double>(sample_rate_) / static_cast<double>(factor_);
}

std::span<const float> MonoFeed::Take(std::span<const std::int16_t> samples) {
  const std::size_t frames = samples.size() / channels_;
  const std::size_t had = line_.size();
  line_.resize(had + frames);
  for (std::size_t i = 0; i < frames; ++i) {
    int sum = 0;
    for (std::size_t c = 0; c < channels_; ++c) sum += samples[i * channels_ + c];
    line_[had + i] = static_cast<float>(sum);
  }
  out_.clear();
  std::size_t from = 0;
  for (; from + filter_.size() <= line_.size(); from += factor_) {
    float sum = 0;
    for (std::size_t tap = 0; tap < filter_.size(); ++tap) sum += filter_[tap] * line_[from + tap];
    out_.push_back(sum);
  }
  line_.erase(line_.begin(), line_.begin() + static_cast<std::ptrdiff_t>(std::min(from, line_.size())));
  return out_;
}

}  // namespace music
