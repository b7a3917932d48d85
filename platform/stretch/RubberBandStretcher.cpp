// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/stretch/RubberBandStretcher.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace platform::stretch {
namespace {

using Library = RubberBand::RubberBandStretcher;

constexpr int kOptions = Library::OptionProcessRealTime | Library::OptionEngineFiner |
                         Library::OptionWindowShort | Library::OptionThreadingNever |
                         Library::OptionPitchHighConsistency | Library::OptionChannelsTogether;
constexpr std::size_t kMostAtOnce = 1024;

}  // namespace

RubberBandStretcher::RubberBandStretcher(int sample_rate)
    : stretcher_(static_cast<std::size_t>(sample_rate), 2, kOptions) {
  stretcher_.setMaxProcessSize(kMostAtOnce);
}

void RubberBandStretcher::SetTempo(double ratio) {
  stretcher_.setTimeRatio(1 / std::clamp(ratio, 0.5, 2.0));
}

void RubberBandStretcher::SetPitch(double semitones) {
  stretcher_.setPitchScale(std::exp2(std::clamp(semitones, -12.0, 12.0) / 12));
}

void RubberBandStretcher::Reset() {
  stretcher_.reset();
}

int RubberBandStretcher::StartPad() const {
  return static_cast<int>(stretcher_.getPreferredStartPad());
}

int RubberBandStretcher::StartDelay() const {
  return static_cast<int>(stretcher_.getStartDelay());
}

int RubberBandStretcher::Wanted() const {
  return static_cast<int>(std::clamp<std::size_t>(stretcher_.getSamplesRequired(), 1, kMostAtOnce));
}

void RubberBandStretcher::Put(std::span<const float> left, std::span<const float> right) {
  for (std::size_t from = 0; from < left.size(); from += kMostAtOnce) {
    const std::array<const float*, 2> channels{left.data() + from, right.data() + from};
    stretcher_.process(channels.data(), std::min(kMostAtOnce, left.size() - from), false);
  }
}

int RubberBandStretcher::Available() const {
  return std::max(stretcher_.available(), 0);
}

int RubberBandStretcher::Take(std::span<float> left, std::span<float> right) {
  const std::array<float*, 2> channels{left.data(), right.data()};
  const std::size_t count = std::min(left.size(), static_cast<std::size_t>(Available()));
  return static_cast<int>(stretcher_.retrieve(channels.data(), count));
}

}  // namespace platform::stretch
