// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// What SoundEngine gives of the sound that was heard last.

#include <algorithm>

#include "engine/SoundEngine.h"
#include "music/Spectrum.h"

namespace engine {
namespace {

using StereoFrames = std::array<float, 2 * music::kSpectrumFrames>;

/// Of left and right with these shares.
music::Spectrum SpectrumOfShares(const StereoFrames& stereo, float left, float right) {
  std::array<float, music::kSpectrumFrames> samples;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    samples[i] = stereo[2 * i] * left + stereo[2 * i + 1] * right;
  }
  return music::SpectrumOf(samples);
}

/// Returns the values written: none when the buffer has no room for all.
std::size_t WriteSpectrum(const StereoFrames& stereo, std::span<float> buffer) {
  if (buffer.size() < music::kSpectrumBins) return 0;
  const music::Spectrum both = SpectrumOfShares(stereo, 0.5F, 0.5F);
  std::copy(both.begin(), both.end(), buffer.begin());
  return both.size();
}

std::size_t WriteBothSpectra(const StereoFrames& stereo, std::span<float> buffer) {
  if (buffer.size() < 2 * music::kSpectrumBins) return 0;
  const music::Spectrum left = SpectrumOfShares(stereo, 1, 0);
  const music::Spectrum right = SpectrumOfShares(stereo, 0, 1);
  for (std::size_t bin = 0; bin < music::kSpectrumBins; ++bin) {
    buffer[2 * bin] = left[bin];
    buffer[2 * bin + 1] = right[bin];
  }
  return 2 * music::kSpectrumBins;
}

}  // namespace

std::uint32_t SoundEngine::BASS_ChannelGetData(decks::StreamHandle handle, std::span<float> buffer,
                                               std::uint32_t what) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr) return 0;
  const std::int64_t heard = playing->slot->HeardFrame();
  std::size_t values = 0;
  if ((what & decks::kDataFft256) != 0) {
    StereoFrames stereo;
    playing->stream->tap.Read(heard, stereo);
    values = (what & decks::kDataFftIndividual) != 0 ? WriteBothSpectra(stereo, buffer)
                                                     : WriteSpectrum(stereo, buffer);
  } else {
    const std::size_t asked = (what & ~decks::kDataFloat) / sizeof(float);
    values = std::min(asked, buffer.size()) / 2 * 2;
    playing->stream->tap.Read(heard, buffer.first(values));
  }
  return static_cast<std::uint32_t>(values * sizeof(float));
}

}  // namespace engine
