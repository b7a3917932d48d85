// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/clsBassPlayer.h"

#include <algorithm>

#include "decks/StreamBuild.h"

namespace decks {
namespace {

std::uint32_t LeftPeak(std::uint32_t level) {
  return level & 0xFFFFU;
}

std::uint32_t RightPeak(std::uint32_t level) {
  return level >> 16;
}

}  // namespace

clsBassPlayer::clsBassPlayer(AudioEngine& engine, const MasterControls& controls)
    : engine_(engine), controls_(controls), prelisten_(engine) {}

clsBassPlayer::~clsBassPlayer() {
  if (main_ != 0 || prelisten_.stream != 0) StopPlay();
}

void clsBassPlayer::Play() {
  PlayMain();
  if (prelisten_.InUse()) PlayPrelisten();
  is_playing_ = true;
  is_paused_ = false;
}

void clsBassPlayer::StopPlay() {
  engine_.BASS_ChannelStop(main_);
  engine_.BASS_StreamFree(main_);
  engine_.BASS_FX_BPM_Free(main_);
  engine_.BASS_FX_BPM_Free(prelisten_.stream);
  RemoveEffects(engine_, main_);
  main_ = 0;
  prelisten_.Stop();
  is_playing_ = false;
  is_paused_ = false;
}

void clsBassPlayer::PausePlay() {
  engine_.BASS_ChannelPause(main_);
  prelisten_.Pause();
  is_paused_ = true;
}

void clsBassPlayer::ResumePlay() {
  engine_.BASS_ChannelPlay(main_, false);
  prelisten_.Resume(main_);
  is_paused_ = false;
}

void clsBassPlayer::OpenFile() {
  if (prelisten_.InUse()) prelisten_.Open(filename_);
  OpenMain();
  start_mix_point_ = end_mix_point_ = {};
  mp3_info_.ResetVals();
  is_playing_ = false;
  is_paused_ = false;
}

void clsBassPlayer::OpenMain() {
  engine_.BASS_FX_BPM_Free(main_);
  engine_.BASS_StreamFree(main_);
  RemoveEffects(engine_, main_);
  main_ = 0;
  length_ = {};
  if (!engine_.BASS_SetDevice(device_)) return;  // the device that is current is another output's
  const StreamHandle decoder =
      CreateDecoder(engine_, filename_, StreamTypeOf(filename_), 0, kStreamDecode | SpeakerFlag(speaker_));
  length_ = engine_.BASS_ChannelGetLength(decoder);
  main_ = WrapInTempo(engine_, decoder);
  prelisten_.Follow(main_);
}

void clsBassPlayer::OpenPrelisten() {
  prelisten_.Open(filename_);
  prelisten_.Follow(main_);
}

void clsBassPlayer::PlayMain() {
  engine_.BASS_SetDevice(device_);
  engine_.BASS_ChannelPlay(main_, false);
}

void clsBassPlayer::PlayPrelisten() {
  prelisten_.Start(filename_, main_);
}

void clsBassPlayer::PausePrelisten() {
  prelisten_.Pause();
}

void clsBassPlayer::ClosePrelisten() {
  engine_.BASS_FX_BPM_Free(prelisten_.stream);
  prelisten_.Stop();
}

MixPointRequest clsBassPlayer::ScanRequest() const {
  return {filename_, speaker_, controls_.AutomationSlider[1]};
}

float clsBassPlayer::dB() {
  const std::uint32_t level = engine_.BASS_ChannelGetLevel(main_);
  return combined_.Read(std::max(LeftPeak(level), RightPeak(level)), controls_.MainVolume);
}

void clsBassPlayer::volume(std::int16_t level) {
  volume_ = level;
  SetLevel(engine_, main_, level);
}

support::BytePosition clsBassPlayer::StreamTime() const {
  return engine_.BASS_ChannelGetPosition(main_);
}

void clsBassPlayer::StreamTime(support::BytePosition position) {
  engine_.BASS_ChannelSetPosition(main_, position);
  if (prelisten_.stream != 0) engine_.BASS_ChannelSetPosition(prelisten_.stream, position);
}

float clsBassPlayer::LeftdB() {
  return left_.Read(LeftPeak(engine_.BASS_ChannelGetLevel(main_)), controls_.MainVolume);
}

float clsBassPlayer::RightdB() {
  return right_.Read(RightPeak(engine_.BASS_ChannelGetLevel(main_)), controls_.MainVolume);
}

}  // namespace decks
