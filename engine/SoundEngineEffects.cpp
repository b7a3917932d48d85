// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of SoundEngine on the effects of a playing stream.

#include <cmath>

#include "engine/SoundEngine.h"

namespace engine {

bool SoundEngine::BASS_ChannelGetAttributes(decks::StreamHandle handle, int& frequency, int& volume,
                                            int& pan) {
  const Playing* playing = players_.Find(handle);
  if (playing == nullptr) return false;
  const Stream& stream = *playing->stream;
  const double set_rate = stream.GetTempo().sample_rate;
  frequency = set_rate == 0 ? stream.Format().sample_rate : static_cast<int>(std::lround(set_rate));
  const std::uint64_t asked = stream.VolumeAsked();
  volume = asked == 0 ? 100 : static_cast<int>(std::lround(Stream::VolumeOf(asked) * 100));
  pan = static_cast<int>(std::lround(stream.Pan() * 100));
  return true;
}

bool SoundEngine::BASS_FX_DSP_Set(decks::StreamHandle handle, int effect_type, int /*priority*/) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr || effect_type != decks::kPeakingEffect) return false;
  const bool added = SoundOf(*playing).ten.AddBand();
  players_.TellFollowers(handle);
  return added;
}

bool SoundEngine::BASS_FX_DSP_SetParameters(decks::StreamHandle handle, int effect_type,
                                            const decks::PeakingBand& band) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr || effect_type != decks::kPeakingEffect || playing->sound == nullptr) return false;
  if (!playing->sound->ten.Set(band)) return false;
  players_.TellFollowers(handle);
  return true;
}

bool SoundEngine::BASS_FX_DSP_GetParameters(decks::StreamHandle handle, int effect_type,
                                            decks::PeakingBand& band) {
  const Playing* playing = players_.Find(handle);
  if (playing == nullptr || effect_type != decks::kPeakingEffect || playing->sound == nullptr) return false;
  return playing->sound->ten.Get(band);
}

void SoundEngine::BASS_FX_DSP_Remove(decks::StreamHandle handle, int effect_type) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr || playing->sound == nullptr) return;
  if (effect_type == decks::kPeakingEffect) {
    playing->sound->ten.RemoveBands();  // what sounds glides back to flat, so the object stays
  } else {
    SetEffects(*playing, decks::Without(effect_type, EffectsOf(*playing)));
  }
  players_.TellFollowers(handle);
}

void SoundEngine::BASS_FX_BPM_Free(decks::StreamHandle /*stream*/) {}

}  // namespace engine
