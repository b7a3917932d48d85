// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/Karaoke.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "karaoke/MciErrors.h"
#include "support/Text.h"

namespace karaoke {
namespace {

support::Result<void> Checked(std::uint32_t error) {
  if (error == 0) return {};
  return support::Error{support::ErrorCode::Unavailable, std::string(MciErrorText(error))};
}

}  // namespace

support::Result<void> Karaoke::ReadFile(const std::string& path) {
  auto bytes = ReadSongBytes(path);
  if (!bytes) return bytes.Failure();
  TakeSong(path, ReadSong(bytes.Value()));
  return {};
}

void Karaoke::TakeSong(std::string path, Song song) {
  static_cast<void>(CloseDevice());
  path_ = std::move(path);
  song_ = std::move(song);
}

std::uint32_t Karaoke::GetMusicVolume() {
  std::uint32_t volume = 0;
  return sequencer_.midiOutGetVolume(0, volume) == 0 ? volume : 0;
}

support::Result<void> Karaoke::SetMusicVolume(std::uint32_t volume) {
  return Checked(sequencer_.midiOutSetVolume(0, volume));
}

support::Result<void> Karaoke::Velocity(double factor) {
  if (!std::isfinite(factor)) return {};
  velocity_ = std::clamp(factor, 0.5, 2.0);
  return device_ == 0 ? support::Result<void>() : Checked(sequencer_.SetSpeed(device_, velocity_));
}

support::Result<void> Karaoke::KarOpenDevice() {
  static_cast<void>(CloseDevice());
  MciParameters open;
  open.device_type = "sequencer";
  open.element_name = path_;
  if (const auto error = Checked(sequencer_.mciSendCommandA(0, kMciOpen, kMciOpenFlags, open)); !error) {
    return error;
  }
  device_ = open.device;
  MciParameters set;
  set.time_format = kMciFormatMilliseconds;
  MciParameters status;
  status.item = kMciStatusLength;
  auto done = Send(kMciSet, kMciSetFlags, set);
  if (done) done = Send(kMciStatus, kMciLengthFlags, status);
  if (done && velocity_ != 1) done = Velocity(velocity_);
  if (!done) {
    static_cast<void>(CloseDevice());
    return done;
  }
  time_length_ = status.result;
  length_ = support::FormatMinutes(time_length_ / 1000);
  return done;
}

support::Result<void> Karaoke::CloseDevice() {
  if (device_ == 0) return {};
  const auto done = Send(kMciClose, 0);
  device_ = 0;
  return done;
}

support::Result<void> Karaoke::Play() {
  return Send(kMciPlay, kMciNotify);
}

support::Result<void> Karaoke::Pause() {
  return Send(kMciPause, 0);
}

support::Result<void> Karaoke::StopPlay() {
  return Send(kMciStop, 0);
}

support::Result<void> Karaoke::SeekIni() {
  return Send(kMciSeek, kMciSeekToStart);
}

support::Result<void> Karaoke::SeekEnd() {
  return Send(kMciSeek, kMciSeekToEnd);
}

support::Result<void> Karaoke::SetPosition(std::uint32_t milliseconds) {
  MciParameters seek;
  seek.to = milliseconds;
  return Send(kMciSeek, kMciTo, seek);
}

std::uint32_t Karaoke::Position() {
  return Query(kMciStatusPosition);
}

bool Karaoke::IsPlaying() {
  return Query(kMciStatusMode) == kMciModePlay;
}

std::uint32_t Karaoke::Query(std::uint32_t item) {
  MciParameters status;
  status.item = item;
  return device_ != 0 && Send(kMciStatus, kMciQueryFlags, status) ? status.result : 0;
}

support::Result<void> Karaoke::Send(std::uint32_t command, std::uint32_t flags) {
  MciParameters none;
  return Send(command, flags, none);
}

support::Result<void> Karaoke::Send(std::uint32_t command, std::uint32_t flags, MciParameters& parameters) {
  if (device_ == 0) return Checked(mci_error::kInvalidDeviceId);
  return Checked(sequencer_.mciSendCommandA(device_, command, flags, parameters));
}

}  // namespace karaoke
