// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <span>

#include "engine/ports/OutputDevice.h"

namespace engine {

inline constexpr int kMaxDeviceChannels = 32;

/// What one channel of a device gets of a stream's two sides.
struct SpeakerShare {
  int channel = 0;
  float left = 0;
  float right = 0;
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

 private:
  struct Shares {
    std::array<SpeakerShare, kMaxDeviceChannels> share{};
    int count = 0;
    void Add(int channel, float left, float right) {
      share[static_cast<std::size_t>(count++)] = {channel, left, right};
    }
  };
  int channels_ = 0;
  std::array<Shares, kCodes> codes_{};
};

}  // namespace engine
