// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace karaoke {

// Numbers of the multimedia command interface, under the names that its public headers give them.
inline constexpr std::uint32_t kMciOpen = 2051;
inline constexpr std::uint32_t kMciClose = 2052;
inline constexpr std::uint32_t kMciPlay = 2054;
inline constexpr std::uint32_t kMciSeek = 2055;
inline constexpr std::uint32_t kMciStop = 2056;
inline constexpr std::uint32_t kMciPause = 2057;
inline constexpr std::uint32_t kMciSet = 2061;
inline constexpr std::uint32_t kMciStatus = 2068;

inline constexpr std::uint32_t kMciNotify = 0x1;
inline constexpr std::uint32_t kMciWait = 0x2;
inline constexpr std::uint32_t kMciTo = 0x8;
inline constexpr std::uint32_t kMciSeekToStart = 0x100;
inline constexpr std::uint32_t kMciSeekToEnd = 0x200;
inline constexpr std::uint32_t kMciStatusItem = 0x100;
inline constexpr std::uint32_t kMciSetTimeFormat = 0x400;

inline constexpr std::uint32_t kMciOpenFlags = 8705;   ///< type, element, notify
inline constexpr std::uint32_t kMciSetFlags = 17411;   ///< time format and off, notify, wait
inline constexpr std::uint32_t kMciLengthFlags = 258;  ///< status item, wait
inline constexpr std::uint32_t kMciQueryFlags = 256;   ///< status item

inline constexpr std::uint32_t kMciStatusLength = 1;
inline constexpr std::uint32_t kMciStatusPosition = 2;
inline constexpr std::uint32_t kMciStatusMode = 4;

inline constexpr std::uint32_t kMciModeNotReady = 524;
inline constexpr std::uint32_t kMciModeStop = 525;
inline constexpr std::uint32_t kMciModePlay = 526;
inline constexpr std::uint32_t kMciModePause = 529;

inline constexpr std::uint32_t kMciFormatMilliseconds = 0;

/// What goes into a command and comes out of it; each command uses its own members.
struct MciParameters {
  std::string device_type = {};   ///< MCI_OPEN: "sequencer"
  std::string element_name = {};  ///< MCI_OPEN: the file
  std::uint32_t device = 0;       ///< MCI_OPEN gives it
  std::uint32_t time_format = 0;  ///< MCI_SET
  std::uint32_t item = 0;         ///< MCI_STATUS
  std::uint32_t result = 0;       ///< MCI_STATUS gives it
  std::uint32_t to = 0;           ///< MCI_SEEK with MCI_TO, in the time format set
};

/// A player of MIDI files and the MIDI volume, in the words of the multimedia command interface.
///
/// A seek leaves playing or standing as it was. Threads: one.
class MidiSequencer {
 public:
  virtual ~MidiSequencer() = default;
  /// 0 or an error number. device: 0 with MCI_OPEN.
  virtual std::uint32_t mciSendCommandA(std::uint32_t device, std::uint32_t command, std::uint32_t flags,
                                        MciParameters& parameters) = 0;
  /// Low word left, high word right, 0xFFFF is full. 0 or an error number.
  virtual std::uint32_t midiOutGetVolume(std::uint32_t device, std::uint32_t& volume) = 0;
  virtual std::uint32_t midiOutSetVolume(std::uint32_t device, std::uint32_t volume) = 0;
  /// 1 is as written; 0.5 to 2. A sequencer that cannot change it says so.
  virtual std::uint32_t SetSpeed(std::uint32_t device, double factor) = 0;
};

}  // namespace karaoke
