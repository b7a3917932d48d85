// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/BuiltInVisualisation.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace app {
namespace {

constexpr float kFloor = -60;  // dB

/// First bin of each bar, and the end: single bins as long as even steps of pitch would be narrower. Bin 0 is
/// no sound.
std::array<std::size_t, BuiltInVisualisation::kBars + 1> FirstBins() {
  std::array<std::size_t, BuiltInVisualisation::kBars + 1> bins{1};
  for (std::size_t bar = 1; bar < bins.size(); ++bar) {
    const double before = double(bins[bar - 1]);
    const double step = std::pow(double(music::kSpectrumBins) / before, 1 / double(bins.size() - bar));
    bins[bar] = std::max(bins[bar - 1] + 1, static_cast<std::size_t>(std::lround(before * step)));
  }
  return bins;
}

/// 3 dB an octave from 1 kHz up, by which music has less.
float TiltAt(std::size_t bin) {
  constexpr float kLevelTo = 6;
  return std::sqrt(std::max(1.0F, static_cast<float>(bin) / kLevelTo));
}

float HeightOf(float magnitude) {
  return std::clamp(1 - 20 * std::log10(std::max(magnitude, 1e-6F)) / kFloor, 0.0F, 1.0F);
}

Picture Bars(const music::Spectrum& spectrum) {
  static const auto first_bins = FirstBins();
  Picture picture{Picture::Kind::Bars, {}};
  for (std::size_t bar = 0; bar + 1 < first_bins.size(); ++bar) {
    const auto bins = std::span(spectrum).subspan(first_bins[bar], first_bins[bar + 1] - first_bins[bar]);
    const float highest = *std::max_element(bins.begin(), bins.end());
    picture.values.push_back(HeightOf(highest * TiltAt(first_bins[bar])));
  }
  return picture;
}

Picture Line(const HeardSound& sound) {
  const std::size_t shown = sound.samples.size() / 2;
  std::size_t begin = sound.samples.size() - shown;  // the newest, where nothing rises
  for (std::size_t i = begin; i > 0; --i) {
    if (sound.samples[i - 1] < 0 && sound.samples[i] >= 0) {
      begin = i;
      break;
    }
  }
  const auto first = sound.samples.begin() + static_cast<std::ptrdiff_t>(begin);
  Picture picture{Picture::Kind::Line, {first, first + static_cast<std::ptrdiff_t>(shown)}};
  for (float& value : picture.values) value = std::clamp(value, -1.0F, 1.0F);
  return picture;
}

}  // namespace

std::vector<std::string> BuiltInVisualisation::BASS_VIS_FindPlugins(const std::filesystem::path& /*folder*/) {
  return {kSpectrum, kWave};
}

void BuiltInVisualisation::BASS_VIS_SetConfig(int option, int value) {
  options_[option] = value;
}

Picture BuiltInVisualisation::Show(std::string_view name, const HeardSound& sound) {
  if (name == kSpectrum) return Bars(sound.spectrum);
  if (name == kWave) return Line(sound);
  return {};
}

int BuiltInVisualisation::Config(int option) const {
  const auto found = options_.find(option);
  return found == options_.end() ? 0 : found->second;
}

}  // namespace app
