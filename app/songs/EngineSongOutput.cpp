// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/songs/EngineSongOutput.h"

#include <cmath>
#include <utility>

namespace app {

support::Result<void> EngineSongOutput::Load(std::shared_ptr<support::SoundGenerator> sound) {
  Unload();
  const bool pair = place_.speaker >= 1 && place_.speaker <= 4;
  const std::uint32_t speaker = pair ? decks::kSpeakerFront * static_cast<std::uint32_t>(place_.speaker) : 0;
  stream_ = control_.CreateGenerated(std::move(sound), place_.device, speaker);
  if (stream_ == 0) return control_.LastError();
  return {};
}

void EngineSongOutput::Unload() {
  if (stream_ != 0) engine_.BASS_StreamFree(stream_);
  stream_ = 0;
}

void EngineSongOutput::Play() {
  engine_.BASS_ChannelPlay(stream_, false);
}

void EngineSongOutput::Pause() {
  engine_.BASS_ChannelPause(stream_);
}

void EngineSongOutput::Seek(std::int64_t frame) {
  constexpr std::int64_t kBytesAFrame = 4;  // as the engine counts: two channels of 16 bits
  engine_.BASS_ChannelSetPosition(stream_, {kBytesAFrame * frame});
}

void EngineSongOutput::SetSpeed(double factor) {
  engine_.BASS_FX_TempoSet(stream_, static_cast<float>((factor - 1) * 100), -1, decks::kTempoUnchanged);
}

void EngineSongOutput::SetVolume(float volume) {
  engine_.BASS_ChannelSetAttributes(stream_, -1, static_cast<int>(std::lround(volume * 100)), -101);
}

std::int64_t EngineSongOutput::HeardFrame() {
  return Heard().frame.value;
}

bool EngineSongOutput::IsPlaying() {
  const decks::HeardStream heard = Heard();
  return heard.playing && !heard.ended;
}

}  // namespace app
