// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "dmx/ports/DmxInterface.h"

namespace platform::usb {

/// How many bytes a K8062 takes at a time: eight with its maker's firmware, 64 with the upgrade that others
/// made for it.
enum class K8062Size : int { Maker = 8, Upgraded = 64 };

/// What the K8062 takes at a time, about every 10 ms. The first byte is its kind:
///   4  start of a frame: zeros + 1, then levels
///   2  levels
///   5  zeros, then levels
/// with levels as far as the packet goes: six, seven and six of them, or 62, 63 and 62. What is left of a
/// frame goes in single ones or, upgraded, at once:
///   3  one level
///   6  a number of levels up to 62, then so many: the end of a frame
///   7  the same: a whole frame
/// A frame goes out to the lamps when the start of the next one arrives.
using K8062Packet = std::vector<std::uint8_t>;

/// The packets of one frame, as few as can be.
/// count: how many channels the frame carries; see CarriedChannels. Requires: 6 to 512.
[[nodiscard]] std::vector<K8062Packet> EncodeK8062Frame(
    std::span<const dmx::DmxLevel, dmx::kUniverseChannels> levels, int count,
    K8062Size size = K8062Size::Maker);

/// How many channels a frame carries best when it needs this many: at least 24, as shorter frames come too
/// fast for some lamps, and rounded up to where no channel is left over that would take a packet for itself.
[[nodiscard]] int CarriedChannels(int needed, K8062Size size = K8062Size::Maker);

}  // namespace platform::usb
