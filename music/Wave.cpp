// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/Wave.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

namespace music {
namespace {

constexpr float kLowEdge = 200;
constexpr float kHighEdge = 2500;

/// Of a filter with one pole.
float ShareOfNewSample(float edge, int sample_rate) {
  return 1 - std::exp(-2 * std::numbers::pi_v<float> * edge / static_cast<float>(sample_rate));
}

std::uint8_t Loudness(float power, int frames) {
  const float root = std::sqrt(power / static_cast<float>(frames)) / 32768;
  return static_cast<std::uint8_t>(std::clamp(std::lround(root * 255), 0L, 255L));
}

std::int8_t Height(int sample) {
  return static_cast<std::int8_t>(std::clamp(sample * 127 / 32767, -127, 127));
}

WaveColumn Together(std::span<const WaveColumn> columns) {
  WaveColumn all = columns.front();
  for (const WaveColumn& column : columns) {
    all.lowest = std::min(all.lowest, column.lowest);
    all.highest = std::max(all.highest, column.highest);
    all.low = std::max(all.low, column.low);
    all.mid = std::max(all.mid, column.mid);
    all.high = std::max(all.high, column.high);
  }
  return all;
}

std::vector<WaveColumn> Overview(std::span<const WaveColumn> fine) {
  const std::size_t count = std::min<std::size_t>(fine.size(), Wave::kOverviewColumns);
  std::vector<WaveColumn> overview;
  overview.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t first = i * fine.size() / count;
    const std::size_t end = (i + 1) * fine.size() / count;
    overview.push_back(Together(fine.subspan(first, end - first)));
  }
  return overview;
}

}  // namespace

Wave Wave::Of(std::vector<WaveColumn> fine) {
  Wave wave;
  wave.overview = Overview(fine);
  wave.fine = std::move(fine);
  return wave;
}

WaveBuilder::WaveBuilder(int sample_rate, int channels)
    : sample_rate_(sample_rate),
      channels_(static_cast<std::size_t>(channels)),
      low_share_(ShareOfNewSample(kLowEdge, sample_rate)),
      high_share_(ShareOfNewSample(kHighEdge, sample_rate)),
      column_end_(std::max(1, sample_rate / Wave::kColumnsASecond)) {
  assert(sample_rate > 0 && channels > 0 && "a file has a rate and channels");
}

void WaveBuilder::Add(std::span<const std::int16_t> samples) {
  for (; samples.size() >= channels_; samples = samples.subspan(channels_)) {
    AddFrame(samples.first(channels_));
  }
}

void WaveBuilder::AddFrame(std::span<const std::int16_t> frame) {
  int sum = 0;
  for (const std::int16_t sample : frame) {
    lowest_ = std::min<int>(lowest_, sample);
    highest_ = std::max<int>(highest_, sample);
    sum += sample;
  }
  const float mono = static_cast<float>(sum) / static_cast<float>(channels_);
  low_ += low_share_ * (mono - low_);
  low_and_mid_ += high_share_ * (mono - low_and_mid_);
  const float mid = low_and_mid_ - low_;
  const float high = mono - low_and_mid_;
  low_power_ += low_ * low_;
  mid_power_ += mid * mid;
  high_power_ += high * high;
  ++in_column_;
  if (++frames_ == column_end_) EndColumn();
}

void WaveBuilder::EndColumn() {
  columns_.push_back({Height(lowest_), Height(highest_), Loudness(low_power_, in_column_),
                      Loudness(mid_power_, in_column_), Loudness(high_power_, in_column_)});
  lowest_ = highest_ = in_column_ = 0;
  low_power_ = mid_power_ = high_power_ = 0;
  // By whole numbers, so that the last column of a long set is where it belongs.
  const auto next = static_cast<std::int64_t>(columns_.size()) + 1;
  column_end_ = std::max(frames_ + 1, next * sample_rate_ / Wave::kColumnsASecond);
}

Wave WaveBuilder::SoFar(double expected_seconds) const {
  constexpr double kMostColumns = 24.0 * 3600 * Wave::kColumnsASecond;
  const double expected = std::clamp(expected_seconds * Wave::kColumnsASecond, 0.0, kMostColumns);
  std::vector<WaveColumn> whole = columns_;
  whole.resize(std::max(whole.size(), static_cast<std::size_t>(expected)));
  return {Overview(whole), columns_};
}

Wave WaveBuilder::Finish() {
  if (in_column_ > 0) EndColumn();
  return Wave::Of(std::move(columns_));
}

}  // namespace music
