// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <span>

#include "engine/ports/OutputDevice.h"

namespace engine {

inline constexpr int kMaxDeviceChannels = 32;

/// What one speaker of a device gets of a stream's two sides.
struct SpeakerShare {
  int bus = 0;
  int side = 0;  ///< of the bus: 0 or 1
  float left = 0;
  float right = 0;
};

/// A pair of a device's speakers, which is limited by itself; a speaker without a partner has no right one.
struct SpeakerBus {
  int left = 0;    ///< channel
  int right = -1;  ///< channel, or -1
};

/// Where the streams of a pair code go on one device.
///
/// Codes 1 to 4 are front, rear, centre with LFE, second rear (side); any other code, and a pair that the
/// device lacks, is every speaker: left to the left ones, right to the right ones, half of each to those
/// between. Threads: any; a value.
class SpeakerMap {
 public:
  static constexpr int kCodes = 5;

  SpeakerMap() = default;
  explicit SpeakerMap(std::span<const Speaker> speakers);

  [[nodiscard]] int Channels() const noexcept { return channels_; }
  [[nodiscard]] std::span<const SpeakerShare> Of(int pair) const noexcept;
  /// Each channel that gets sound is in one of them.
  [[nodiscard]] std::span<const SpeakerBus> Buses() const noexcept {
    return {buses_.data(), static_cast<std::size_t>(bus_count_)};
  }

 private:
  struct Shares {
    std::array<SpeakerShare, kMaxDeviceChannels> share{};
    int count = 0;
  };
  /// Where a channel's sound goes; Add makes a bus of its own for one that has none yet.
  struct Seat {
    int bus = -1;
    int side = 0;
  };
  void Add(std::size_t code, int channel, float left, float right);
  void SeatPair(int left, int right);

  int channels_ = 0;
  int bus_count_ = 0;
  std::array<SpeakerBus, kMaxDeviceChannels> buses_{};
  std::array<Seat, kMaxDeviceChannels> seats_{};
  std::array<Shares, kCodes> codes_{};
};

}  // namespace engine
