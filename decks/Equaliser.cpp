// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/Equaliser.h"

namespace decks {
namespace {

bool IsSlider(int slider) {
  return slider >= 0 && slider < kEqSliders;
}

}  // namespace

void Equaliser::SetUp(StreamHandle stream) {
  int frequency = 0;
  int volume = 0;
  int pan = 0;
  engine_.BASS_ChannelGetAttributes(stream, frequency, volume, pan);
  for (int band = 0; band < kEqBands; ++band) {
    engine_.BASS_FX_DSP_Set(stream, kPeakingEffect, 0);
  }
  for (int band = 0; band < kEqBands; ++band) {
    const auto centre = static_cast<float>(kEqCentres[static_cast<std::size_t>(band)]);
    engine_.BASS_FX_DSP_SetParameters(stream, kPeakingEffect, {band, frequency, kEqBandwidth, 0, centre, 0});
  }
}

Equaliser::Gains Equaliser::GainsOf(StreamHandle stream) {
  Gains gains{};
  for (int band = 0; band < kEqBands; ++band) {
    PeakingBand parameters{.band = band};
    engine_.BASS_FX_DSP_GetParameters(stream, kPeakingEffect, parameters);
    gains[static_cast<std::size_t>(band)] = parameters.gain;
  }
  return gains;
}

void Equaliser::SetGains(StreamHandle stream, const Gains& gains) {
  for (int band = 0; band < kEqBands; ++band) {
    PeakingBand parameters{.band = band};
    if (!engine_.BASS_FX_DSP_GetParameters(stream, kPeakingEffect, parameters)) continue;
    parameters.gain = gains[static_cast<std::size_t>(band)];
    engine_.BASS_FX_DSP_SetParameters(stream, kPeakingEffect, parameters);
  }
}

int Equaliser::Eq(int slider) const {
  return IsSlider(slider) ? sliders_[static_cast<std::size_t>(slider)] : 0;
}

void Equaliser::Eq(int slider, int decibels) {
  if (IsSlider(slider)) sliders_[static_cast<std::size_t>(slider)] = decibels;
}

void Equaliser::SliderChanged(int slider, std::span<const clsBassPlayer* const> decks) {
  if (!IsSlider(slider)) return;
  for (const clsBassPlayer* deck : decks) {
    if (!deck->IsPlaying()) continue;
    PeakingBand parameters{.band = slider - 1};
    engine_.BASS_FX_DSP_GetParameters(deck->STRM(), kPeakingEffect, parameters);
    parameters.gain = static_cast<float>(Eq(slider));
    engine_.BASS_FX_DSP_SetParameters(deck->STRM(), kPeakingEffect, parameters);
  }
}

}  // namespace decks
