// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of RecordingEngine on effects, and what it gives of the sound.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "decks/testing/CallText.h"
#include "decks/testing/RecordingEngine.h"
#include "music/Spectrum.h"

namespace decks::testing {
namespace {

constexpr std::size_t kBands = 10;

bool Has(const std::vector<PeakingBand>& bands, int effect_type, int number) {
  return effect_type == kPeakingEffect && number >= 0 && number < static_cast<int>(bands.size());
}

bool AllFinite(const PeakingBand& band) {
  return std::isfinite(band.bandwidth) && std::isfinite(band.q) && std::isfinite(band.centre) &&
         std::isfinite(band.gain);
}

}  // namespace

bool RecordingEngine::BASS_FX_DSP_Set(StreamHandle stream, int effect_type, int priority) {
  support::MutexLock lock(mutex_);
  Stream* found = Record(Line("BASS_FX_DSP_Set", stream, effect_type, priority)) ? At(stream) : nullptr;
  if (found == nullptr || effect_type != kPeakingEffect || found->bands.size() == kBands) return false;
  found->bands.emplace_back().band = static_cast<int>(found->bands.size()) - 1;
  return true;
}

bool RecordingEngine::BASS_FX_DSP_SetParameters(StreamHandle stream, int effect_type,
                                                const PeakingBand& band) {
  support::MutexLock lock(mutex_);
  const std::string line = Line("BASS_FX_DSP_SetParameters", stream, effect_type, band.band, band.frequency,
                                band.bandwidth, band.q, band.centre, band.gain);
  Stream* found = Record(line) ? At(stream) : nullptr;
  if (found == nullptr || !Has(found->bands, effect_type, band.band) || !AllFinite(band)) return false;
  found->bands[static_cast<std::size_t>(band.band)] = band;
  return true;
}

bool RecordingEngine::BASS_FX_DSP_GetParameters(StreamHandle stream, int effect_type, PeakingBand& band) {
  support::MutexLock lock(mutex_);
  const std::string line = Line("BASS_FX_DSP_GetParameters", stream, effect_type, band.band);
  const Stream* found = Record(line) ? At(stream) : nullptr;
  if (found == nullptr || !Has(found->bands, effect_type, band.band)) return false;
  band = found->bands[static_cast<std::size_t>(band.band)];
  return true;
}

void RecordingEngine::BASS_FX_DSP_Remove(StreamHandle stream, int effect_type) {
  support::MutexLock lock(mutex_);
  Stream* found = Record(Line("BASS_FX_DSP_Remove", stream, effect_type)) ? At(stream) : nullptr;
  if (found != nullptr && effect_type == kPeakingEffect) found->bands.clear();
}

void RecordingEngine::BASS_FX_BPM_Free(StreamHandle stream) {
  support::MutexLock lock(mutex_);
  Record(Line("BASS_FX_BPM_Free", stream));
}

std::uint32_t RecordingEngine::BASS_ChannelGetData(StreamHandle stream, std::span<float> buffer,
                                                   std::uint32_t what) {
  support::MutexLock lock(mutex_);
  const Stream* found = At(stream);
  if (found == nullptr) return 0;
  const auto tone = [&](std::size_t frame, int peak) {
    const float level = found->playing ? static_cast<float>(peak) / 32768 : 0;
    return level * static_cast<float>(std::sin(2 * std::numbers::pi * kHeardHertz / 44100 * double(frame)));
  };
  if ((what & kDataFft256) != 0) {
    const auto spectrum = [&](int peak) {
      std::array<float, music::kSpectrumFrames> samples;
      for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = tone(i, peak);
      return music::SpectrumOf(samples);
    };
    const bool sides = (what & kDataFftIndividual) != 0;
    const std::size_t size = (sides ? 2 : 1) * music::kSpectrumBins;
    if (buffer.size() < size) return 0;
    const music::Spectrum left = spectrum(found->file.left_peak);
    const music::Spectrum right = spectrum(found->RightPeak());
    const music::Spectrum both = spectrum((found->file.left_peak + found->RightPeak()) / 2);
    for (std::size_t i = 0; i < size; ++i) buffer[i] = !sides ? both[i] : (i % 2 == 0 ? left : right)[i / 2];
    return static_cast<std::uint32_t>(size * sizeof(float));
  }
  const std::size_t values = std::min((what & ~kDataFloat) / sizeof(float), buffer.size()) / 2 * 2;
  for (std::size_t i = 0; i < values; ++i) {
    buffer[i] = tone(i / 2, i % 2 == 0 ? found->file.left_peak : found->RightPeak());
  }
  return static_cast<std::uint32_t>(values * sizeof(float));
}

std::vector<float> RecordingEngine::GainsOf(StreamHandle stream) const {
  support::MutexLock lock(mutex_);
  std::vector<float> gains;
  if (const Stream* found = At(stream)) {
    for (const PeakingBand& band : found->bands) gains.push_back(band.gain);
  }
  return gains;
}

void RecordingEngine::SetGain(StreamHandle stream, support::Decibels gain) {
  support::MutexLock lock(mutex_);
  if (Stream* found = At(stream)) found->gain = gain;
}

support::Decibels RecordingEngine::LimiterReduction(int device, std::uint32_t /*speaker*/) {
  support::MutexLock lock(mutex_);
  return open_.contains(device) ? reduction_ : support::Decibels{};
}

void RecordingEngine::SetLimiterReduction(support::Decibels reduction) {
  support::MutexLock lock(mutex_);
  reduction_ = reduction;
}

void RecordingEngine::Follow(StreamHandle follower, StreamHandle leader) {
  support::MutexLock lock(mutex_);
  if (Stream* found = At(follower)) found->leader = At(leader) == nullptr ? 0 : leader;
}

StreamHandle RecordingEngine::LeaderOf(StreamHandle stream) const {
  support::MutexLock lock(mutex_);
  const Stream* found = At(stream);
  return found == nullptr ? 0 : found->leader;
}

support::Decibels RecordingEngine::GainOf(StreamHandle stream) const {
  support::MutexLock lock(mutex_);
  const Stream* found = At(stream);
  return found == nullptr ? support::Decibels{} : found->gain;
}

}  // namespace decks::testing
