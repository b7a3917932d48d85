// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

#include "platform/usb/K8062Frame.h"

namespace platform::usb::testing {

/// What the box makes of packets.
class K8062Decoder {
 public:
  using Frame = std::array<std::uint8_t, dmx::kUniverseChannels>;

  /// Of eight bytes or, upgraded, of 64.
  void Take(std::span<const std::uint8_t> packet);

  /// The frame that is at the lamps: the last one behind which another began.
  [[nodiscard]] const Frame& Shown() const { return shown_; }
  /// The level of each channel that came last, be its frame shown already or not.
  [[nodiscard]] const Frame& Received() const { return received_; }
  /// How many channels the shown frame carried.
  [[nodiscard]] int ShownChannels() const { return shown_channels_; }
  /// The most that any frame carried since the box got its power.
  [[nodiscard]] int WidestShown() const { return widest_shown_; }
  [[nodiscard]] int FramesShown() const { return frames_shown_; }
  [[nodiscard]] int Packets() const { return packets_; }
  /// What no box would understand, a word each; empty in a sound stream.
  [[nodiscard]] const std::vector<std::string>& Faults() const { return faults_; }
  /// The box lost its power.
  void Reset();

 private:
  void Start();
  void Put(int zeros, std::span<const std::uint8_t> levels);

  Frame frame_{};
  Frame received_{};
  Frame shown_{};
  int at_ = 0;  ///< channels of the frame that have come; 0 before the first
  int shown_channels_ = 0;
  int widest_shown_ = 0;
  int frames_shown_ = 0;
  int packets_ = 0;
  std::vector<std::string> faults_;
};

/// The encoding that a driver does without looking ahead: it skips zeros wherever they stand.
[[nodiscard]] int GreedyK8062Packets(std::span<const dmx::DmxLevel, dmx::kUniverseChannels> levels,
                                     int count);

}  // namespace platform::usb::testing
