// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of RecordingEngine on effects.

#include "decks/testing/CallText.h"
#include "decks/testing/RecordingEngine.h"

namespace decks::testing {

bool RecordingEngine::BASS_ChannelGetAttributes(StreamHandle stream, int& frequency, int& volume, int& pan) {
  support::MutexLock lock(mutex_);
  const Stream* found = Record(Line("BASS_ChannelGetAttributes", stream)) ? At(stream) : nullptr;
  if (found == nullptr) return false;
  frequency = found->file.sample_rate;
  volume = found->volume;
  pan = 0;
  return true;
}

bool RecordingEngine::BASS_FX_DSP_Set(StreamHandle stream, int effect_type, int priority) {
  support::MutexLock lock(mutex_);
  Stream* found = Record(Line("BASS_FX_DSP_Set", stream, effect_type, priority)) ? At(stream) : nullptr;
  if (found == nullptr) return false;
  found->bands.emplace_back().band = static_cast<int>(found->bands.size()) - 1;
  return true;
}

bool RecordingEngine::BASS_FX_DSP_SetParameters(StreamHandle stream, int effect_type,
                                                const PeakingBand& band) {
  support::MutexLock lock(mutex_);
  const std::string line = Line("BASS_FX_DSP_SetParameters", stream, effect_type, band.band, band.frequency,
                                band.bandwidth, band.q, band.centre, band.gain);
  Stream* found = Record(line) ? At(stream) : nullptr;
  if (found == nullptr || band.band < 0 || band.band >= static_cast<int>(found->bands.size())) return false;
  found->bands[static_cast<std::size_t>(band.band)] = band;
  return true;
}

bool RecordingEngine::BASS_FX_DSP_GetParameters(StreamHandle stream, int effect_type, PeakingBand& band) {
  support::MutexLock lock(mutex_);
  const std::string line = Line("BASS_FX_DSP_GetParameters", stream, effect_type, band.band);
  const Stream* found = Record(line) ? At(stream) : nullptr;
  if (found == nullptr || band.band < 0 || band.band >= static_cast<int>(found->bands.size())) return false;
  band = found->bands[static_cast<std::size_t>(band.band)];
  return true;
}

void RecordingEngine::BASS_FX_DSP_Remove(StreamHandle stream, int effect_type) {
  support::MutexLock lock(mutex_);
  Record(Line("BASS_FX_DSP_Remove", stream, effect_type));
}

void RecordingEngine::BASS_FX_BPM_Free(StreamHandle stream) {
  support::MutexLock lock(mutex_);
  Record(Line("BASS_FX_BPM_Free", stream));
}

std::vector<float> RecordingEngine::GainsOf(StreamHandle stream) const {
  support::MutexLock lock(mutex_);
  std::vector<float> gains;
  if (const Stream* found = At(stream)) {
    for (const PeakingBand& band : found->bands) gains.push_back(band.gain);
  }
  return gains;
}

}  // namespace decks::testing
