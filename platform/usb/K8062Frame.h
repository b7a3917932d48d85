// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "dmx/ports/DmxInterface.h"

namespace platform::usb {

/// What the K8062 takes at a time, about every 10 ms. The first byte is its kind:
///   4  start of a frame: zeros + 1, then six levels
///   2  seven levels
///   5  zeros, then six levels
///   3  one level
/// A frame goes out to the lamps when the start of the next one arrives.
using K8062Packet = std::array<std::uint8_t, 8>;

/// The packets of one frame, as few as can be.
/// count: how many channels the frame carries; see CarriedChannels. Requires: 6 to 512.
[[nodiscard]] std::vector<K8062Packet> EncodeK8062Frame(
    std::span<const dmx::DmxLevel, dmx::kUniverseChannels> levels, int count);

/// How many channels a frame carries best when it needs this many: at least 24, as shorter frames come too
/// fast for some lamps, and rounded up to where no channel is left over that would take a packet for itself.
[[nodiscard]] int CarriedChannels(int needed);

}  // namespace platform::usb
