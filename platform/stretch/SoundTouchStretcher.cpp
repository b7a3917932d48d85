// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/stretch/SoundTouchStretcher.h"

#include <algorithm>
#include <cmath>

namespace platform::stretch {
namespace {

constexpr double kPadSeconds = 0.05;

/// Measured: how far beyond half a sequence the middle of what is heard lies.
constexpr double kSearchSeconds = 200.0 / 44100;

}  // namespace

SoundTouchStretcher::SoundTouchStretcher(int sample_rate) : sample_rate_(sample_rate) {
  stretcher_.setSampleRate(static_cast<unsigned>(sample_rate));
  stretcher_.setChannels(2);
  GrowBuffers();
}

/// The library's buffers grow when a tempo first asks for it: let all of that happen now, with silence.
void SoundTouchStretcher::GrowBuffers() {
  for (const double tempo : {0.5, 2.0}) {
    stretcher_.setTempo(tempo);
    for (int fed = 0; fed < sample_rate_ / 2; fed += static_cast<int>(kMostAtOnce)) {
      stretcher_.putSamples(interleaved_.data(), static_cast<unsigned>(kMostAtOnce));
      while (stretcher_.receiveSamples(static_cast<unsigned>(kMostAtOnce)) > 0) continue;
    }
  }
  stretcher_.setTempo(1);
  stretcher_.clear();
}

void SoundTouchStretcher::SetTempo(double ratio) {
  tempo_ = std::clamp(ratio, 0.5, 2.0);
  stretcher_.setTempo(tempo_);
}

void SoundTouchStretcher::SetPitch(double semitones) {
  pitch_ratio_ = std::exp2(std::clamp(semitones, -12.0, 12.0) / 12);
  stretcher_.setPitch(pitch_ratio_);
}

void SoundTouchStretcher::Reset() {
  stretcher_.clear();
}

int SoundTouchStretcher::StartPad() const {
  return static_cast<int>(kPadSeconds * sample_rate_);
}

/// A sequence is taken whole from the source and joined to the one before, so that within it the sound runs
/// at its own tempo: it is right in its middle, and early or late towards its ends.
int SoundTouchStretcher::StartDelay() const {
  const double stretched = tempo_ / pitch_ratio_;  // the tempo before the change of rate that makes the pitch
  const double half = stretcher_.getSetting(SETTING_NOMINAL_OUTPUT_SEQUENCE) / 2.0;
  const double late = (half + kSearchSeconds * sample_rate_) * (1 - 1 / stretched);
  return std::max(0, static_cast<int>(std::lround(StartPad() / tempo_ + late)));
}

int SoundTouchStretcher::Wanted() const {
  return static_cast<int>(kMostAtOnce);
}

void SoundTouchStretcher::Put(std::span<const float> left, std::span<const float> right) {
  for (std::size_t from = 0; from < left.size(); from += kMostAtOnce) {
    const std::size_t count = std::min(kMostAtOnce, left.size() - from);
    for (std::size_t i = 0; i < count; ++i) {
      interleaved_[2 * i] = left[from + i];
      interleaved_[2 * i + 1] = right[from + i];
    }
    stretcher_.putSamples(interleaved_.data(), static_cast<unsigned>(count));
  }
}

int SoundTouchStretcher::Available() const {
  return static_cast<int>(stretcher_.numSamples());
}

int SoundTouchStretcher::Take(std::span<float> left, std::span<float> right) {
  std::size_t taken = 0;
  while (taken < left.size()) {
    const std::size_t most = std::min(kMostAtOnce, left.size() - taken);
    const std::size_t got = stretcher_.receiveSamples(interleaved_.data(), static_cast<unsigned>(most));
    if (got == 0) break;
    for (std::size_t i = 0; i < got; ++i) {
      left[taken + i] = interleaved_[2 * i];
      right[taken + i] = interleaved_[2 * i + 1];
    }
    taken += got;
  }
  return static_cast<int>(taken);
}

}  // namespace platform::stretch
