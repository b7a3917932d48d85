// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include "karaoke/ports/MidiSequencer.h"

namespace platform::windows {

/// The sequencer that comes with the system.
///
/// It stops at every seek; what played is started again. Threads: the one that opens a device.
class WindowsSequencer final : public karaoke::MidiSequencer {
 public:
  std::uint32_t mciSendCommandA(std::uint32_t device, std::uint32_t command, std::uint32_t flags,
                                karaoke::MciParameters& parameters) override;
  std::uint32_t midiOutGetVolume(std::uint32_t device, std::uint32_t& volume) override;
  std::uint32_t midiOutSetVolume(std::uint32_t device, std::uint32_t volume) override;
  std::uint32_t SetSpeed(std::uint32_t device, double factor) override;

 private:
  std::map<std::uint32_t, double> speeds_;  ///< by device; 1 is not there
};

}  // namespace platform::windows
