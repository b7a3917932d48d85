// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/SongSequencer.h"

#include <algorithm>

#include "karaoke/MciErrors.h"

namespace karaoke {

void SongSequencer::Offer(std::string path, std::shared_ptr<SongSound> sound) {
  offered_path_ = std::move(path);
  offered_ = std::move(sound);
}

std::uint32_t SongSequencer::mciSendCommandA(std::uint32_t device, std::uint32_t command, std::uint32_t flags,
                                             MciParameters& parameters) {
  if (command == kMciOpen) return OpenSong(parameters);
  if (sound_ == nullptr || device != device_) return mci_error::kInvalidDeviceId;
  switch (command) {
    case kMciClose:
      return CloseSong();
    case kMciSet:
      return parameters.time_format == kMciFormatMilliseconds ? 0 : mci_error::kBadTimeFormat;
    case kMciStatus:
      return Status(flags, parameters);
    case kMciSeek:
      return Seek(flags, parameters);
    case kMciPlay:
      output_.Play();
      paused_ = false;
      return 0;
    case kMciPause:
    case kMciStop:
      output_.Pause();
      paused_ = command == kMciPause;
      return 0;
    default:
      return mci_error::kUnrecognizedCommand;
  }
}

std::uint32_t SongSequencer::OpenSong(MciParameters& parameters) {
  if (parameters.device_type != "sequencer") return mci_error::kInvalidDeviceName;
  if (sound_ != nullptr) return mci_error::kDeviceOpen;
  if (offered_ == nullptr || parameters.element_name != offered_path_) return mci_error::kFileNotFound;
  if (!output_.Load(offered_)) return mci_error::kDeviceNotReady;
  sound_ = std::move(offered_);
  paused_ = false;
  parameters.device = ++device_;
  return midiOutSetVolume(0, volume_);
}

std::uint32_t SongSequencer::CloseSong() {
  output_.Unload();
  sound_.reset();
  return 0;
}

std::uint32_t SongSequencer::Seek(std::uint32_t flags, const MciParameters& parameters) {
  const auto frame_of = [&](double seconds) {
    const auto frame = static_cast<std::int64_t>(seconds * sound_->SampleRate());
    return std::clamp<std::int64_t>(frame, 0, sound_->Length() - 1);
  };
  const double length = std::chrono::duration<double>(sound_->Events().length).count();
  if ((flags & kMciSeekToStart) != 0) {
    output_.Seek(0);
  } else if ((flags & kMciSeekToEnd) != 0) {
    output_.Seek(frame_of(length));
  } else if ((flags & kMciTo) == 0) {
    return mci_error::kMissingParameter;
  } else if (parameters.to / 1000.0 > length) {
    return mci_error::kOutOfRange;
  } else {
    output_.Seek(frame_of(parameters.to / 1000.0));
  }
  return 0;
}

std::uint32_t SongSequencer::Status(std::uint32_t flags, MciParameters& parameters) {
  if ((flags & kMciStatusItem) == 0) return mci_error::kMissingParameter;
  const auto length = std::chrono::duration_cast<std::chrono::milliseconds>(sound_->Events().length);
  const auto whole = static_cast<std::uint32_t>(std::min<std::int64_t>(length.count(), UINT32_MAX));
  switch (parameters.item) {
    case kMciStatusLength:
      parameters.result = whole;
      return 0;
    case kMciStatusPosition:
      parameters.result = std::min(Milliseconds(output_.HeardFrame()), whole);
      return 0;
    case kMciStatusMode:
      parameters.result = Mode();
      return 0;
    default:
      return mci_error::kUnsupportedFunction;
  }
}

std::uint32_t SongSequencer::Milliseconds(std::int64_t frames) const {
  const double milliseconds = static_cast<double>(frames) * 1000 / sound_->SampleRate();
  return static_cast<std::uint32_t>(std::clamp(milliseconds, 0.0, static_cast<double>(UINT32_MAX)));
}

std::uint32_t SongSequencer::Mode() {
  if (output_.IsPlaying()) return kMciModePlay;
  return paused_ ? kMciModePause : kMciModeStop;
}

std::uint32_t SongSequencer::midiOutGetVolume(std::uint32_t /*device*/, std::uint32_t& volume) {
  volume = volume_;
  return 0;
}

std::uint32_t SongSequencer::midiOutSetVolume(std::uint32_t /*device*/, std::uint32_t volume) {
  constexpr std::uint32_t kFull = 0xFFFF;
  volume_ = volume;
  const std::uint32_t louder = std::max(volume & kFull, volume >> 16);
  if (sound_ != nullptr) output_.SetVolume(static_cast<float>(louder) / kFull);
  return 0;
}

std::uint32_t SongSequencer::SetSpeed(std::uint32_t device, double factor) {
  if (sound_ == nullptr || device != device_) return mci_error::kInvalidDeviceId;
  output_.SetSpeed(factor);
  return 0;
}

}  // namespace karaoke
