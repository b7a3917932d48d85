// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/WindowsSequencer.h"

#include <windows.h>
// Needs the one above.
#include <mmsystem.h>

#include <cmath>

namespace platform::windows {
namespace {

/// Each command has a block of its own.
template <typename Block>
std::uint32_t Send(std::uint32_t device, std::uint32_t command, std::uint32_t flags, Block& block) {
  return ::mciSendCommandA(device, command, flags, reinterpret_cast<DWORD_PTR>(&block));
}

std::uint32_t Open(std::uint32_t flags, karaoke::MciParameters& parameters) {
  MCI_OPEN_PARMSA open{};
  open.lpstrDeviceType = parameters.device_type.c_str();
  open.lpstrElementName = parameters.element_name.c_str();
  const std::uint32_t error = Send(0, MCI_OPEN, flags, open);
  parameters.device = open.wDeviceID;
  return error;
}

std::uint32_t Status(std::uint32_t device, std::uint32_t flags, std::uint32_t item, std::uint32_t& result) {
  MCI_STATUS_PARMS status{};
  status.dwItem = item;
  const std::uint32_t error = Send(device, MCI_STATUS, flags, status);
  result = static_cast<std::uint32_t>(status.dwReturn);
  return error;
}

std::uint32_t Seek(std::uint32_t device, std::uint32_t flags, std::uint32_t to) {
  std::uint32_t mode = 0;
  static_cast<void>(Status(device, MCI_STATUS_ITEM, MCI_STATUS_MODE, mode));
  MCI_SEEK_PARMS seek{};
  seek.dwTo = to;
  const std::uint32_t error = Send(device, MCI_SEEK, flags, seek);
  if (error != 0 || mode != MCI_MODE_PLAY) return error;
  MCI_PLAY_PARMS play{};
  return Send(device, MCI_PLAY, 0, play);
}

}  // namespace

std::uint32_t WindowsSequencer::mciSendCommandA(std::uint32_t device, std::uint32_t command,
                                                std::uint32_t flags, karaoke::MciParameters& parameters) {
  MCI_SET_PARMS set{};
  MCI_GENERIC_PARMS other{};
  switch (command) {
    case MCI_OPEN:
      return Open(flags, parameters);
    case MCI_SET:
      set.dwTimeFormat = parameters.time_format;
      return Send(device, command, flags, set);
    case MCI_STATUS:
      return Status(device, flags, parameters.item, parameters.result);
    case MCI_SEEK:
      return Seek(device, flags, parameters.to);
    case MCI_CLOSE:
      speeds_.erase(device);
      break;
    default:
      break;
  }
  return Send(device, command, flags, other);
}

std::uint32_t WindowsSequencer::midiOutGetVolume(std::uint32_t device, std::uint32_t& volume) {
  DWORD both = 0;
  const std::uint32_t error =
      ::midiOutGetVolume(reinterpret_cast<HMIDIOUT>(static_cast<std::uintptr_t>(device)), &both);
  volume = both;
  return error;
}

std::uint32_t WindowsSequencer::midiOutSetVolume(std::uint32_t device, std::uint32_t volume) {
  return ::midiOutSetVolume(reinterpret_cast<HMIDIOUT>(static_cast<std::uintptr_t>(device)), volume);
}

std::uint32_t WindowsSequencer::SetSpeed(std::uint32_t device, double factor) {
  std::uint32_t tempo = 0;
  const std::uint32_t error = Status(device, MCI_STATUS_ITEM | MCI_WAIT, MCI_SEQ_STATUS_TEMPO, tempo);
  if (error != 0) return error;
  double& speed = speeds_.try_emplace(device, 1).first->second;
  MCI_SEQ_SET_PARMS set{};
  set.dwTempo = static_cast<DWORD>(std::lround(tempo / speed * factor));
  speed = factor;
  return Send(device, MCI_SET, MCI_SEQ_SET_TEMPO, set);
}

}  // namespace platform::windows
