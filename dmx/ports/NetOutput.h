// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "dmx/ports/DmxInterface.h"

namespace dmx {

/// How the channels go out into a network, and under which number.
struct NetWish {
  enum class Protocol { Off, ArtNet, Sacn };
  static constexpr int kLastArtNet = 32'767;  ///< port addresses from 0: net, sub-net and universe in one
  static constexpr int kLastSacn = 63'999;    ///< universes from 1

  Protocol protocol = Protocol::Off;
  int universe = 1;
  /// Of the one who is to have them, "192.168.1.20"; empty: everybody (Art-Net), or who listens to that
  /// universe (sACN).
  std::string address;
  std::array<std::uint8_t, 16> source{};  ///< names this program to receivers of sACN; kept for ever
  bool operator==(const NetWish&) const = default;
};

/// Lamps that a network reaches. What is wished for may change while it sends: then the old receiver goes
/// dark first. Threads: as DmxInterface; Choose as the other calls.
class NetOutput : public DmxInterface {
 public:
  virtual void Choose(const NetWish& wish) = 0;
};

}  // namespace dmx
