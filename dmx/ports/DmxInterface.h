// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "support/Saying.h"

namespace dmx {

using DmxLevel = std::uint8_t;
/// Channels of a universe; they are numbered from 1.
inline constexpr int kUniverseChannels = 512;

/// What an interface can tell of itself, for people to look at.
struct DmxInterfaceStatus {
  enum class State { Stopped, Searching, Sending } state = State::Stopped;
  int packets_per_frame = 0;                    ///< of the last whole frame; 0: not known
  std::chrono::microseconds frame_interval{0};  ///< between the last two frames; 0: not known
  std::uint64_t frames = 0;                     ///< handed to the box since the first start
  std::string text;                             ///< a sentence about the last trouble; may be empty
  support::Saying saying{};                     ///< the same in the language chosen

  bool operator==(const DmxInterfaceStatus&) const = default;
};

/// A USB-DMX interface in the words of its driver library. No call says whether it succeeded.
///
/// Law: the interface keeps the frame and repeats it by itself; a level is handed over once, when it changes.
/// A second start is as good as one; the first one after a stop finds every level at 0. Threads: one at a
/// time; no call blocks longer than a millisecond, and whoever destroys the interface waits for the last
/// frame.
class DmxInterface {
 public:
  virtual ~DmxInterface() = default;
  virtual void StartDevice() = 0;
  /// How many channels a frame carries; those above stay dark.
  virtual void SetChannelCount(int count) = 0;
  /// Requires: a channel from 1 to kUniverseChannels.
  virtual void SetData(int channel, DmxLevel level) = 0;
  /// Stops sending, with every lamp dark, and closes the interface.
  virtual void StopDevice() = 0;

  [[nodiscard]] virtual DmxInterfaceStatus Status() const { return {}; }
};

}  // namespace dmx
