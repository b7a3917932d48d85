// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/LoudestSource.h"

#include <algorithm>
#include <cmath>

namespace app {
namespace {

constexpr float kInaudible = -60;    // dB
constexpr float kFallATick = 0.2F;   // dB, so that a beat is remembered until the next one
constexpr float kClearlyLouder = 3;  // dB

std::size_t PlaceOf(HeardFrom from) {
  return static_cast<std::size_t>(from) - 1;
}

bool IsAudible(const Audible& source) {
  return source.stream != 0 && source.playing && source.volume > 0;
}

}  // namespace

/// In dB, behind the fader.
float LoudestSource::LoudnessOf(const Audible& source) const {
  constexpr float kFullScale = 32768;
  const std::uint32_t peaks = engine_.BASS_ChannelGetLevel(source.stream);
  const std::uint32_t peak = std::max(peaks & 0xFFFF, peaks >> 16);
  const float level = static_cast<float>(peak) / kFullScale * static_cast<float>(source.volume) / 100;
  return level > 0 ? std::max(kInaudible, 20 * std::log10(level)) : kInaudible;
}

void LoudestSource::Choose(const Sources& sources) {
  for (std::size_t i = 0; i < sources.size(); ++i) {
    loudness_[i] =
        IsAudible(sources[i]) ? std::max(LoudnessOf(sources[i]), loudness_[i] - kFallATick) : kInaudible;
  }
  const auto loudest = std::max_element(loudness_.begin(), loudness_.end());
  const float present = from_ == HeardFrom::Nothing ? kInaudible : loudness_[PlaceOf(from_)];
  if (*loudest <= kInaudible) {
    from_ = HeardFrom::Nothing;
  } else if (present <= kInaudible || *loudest > present + kClearlyLouder) {
    from_ = static_cast<HeardFrom>(loudest - loudness_.begin() + 1);
  }
}

HeardSound LoudestSource::Listen(const Sources& sources) {
  Choose(sources);
  HeardSound sound;
  sound.from = from_;
  if (from_ == HeardFrom::Nothing) return sound;
  const decks::StreamHandle stream = sources[PlaceOf(from_)].stream;
  engine_.BASS_ChannelGetData(stream, std::span<float>(sound.spectrum), decks::kDataFft256);
  std::array<float, 2 * std::tuple_size_v<decltype(sound.samples)>> stereo{};
  engine_.BASS_ChannelGetData(stream, std::span<float>(stereo), decks::kDataFloat | sizeof(stereo));
  for (std::size_t i = 0; i < sound.samples.size(); ++i) {
    sound.samples[i] = (stereo[2 * i] + stereo[2 * i + 1]) / 2;
  }
  return sound;
}

}  // namespace app
