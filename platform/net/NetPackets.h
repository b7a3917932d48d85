// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "dmx/ports/NetOutput.h"

namespace platform::net {

using Levels = std::array<dmx::DmxLevel, dmx::kUniverseChannels>;

inline constexpr std::uint16_t kArtNetPort = 6454;
inline constexpr std::uint16_t kSacnPort = 5568;

/// ArtDmx of Art-Net 4. sequence: 1 to 255, round and round.
inline constexpr std::size_t kArtDmxBytes = 18 + dmx::kUniverseChannels;
[[nodiscard]] std::array<std::uint8_t, kArtDmxBytes> ArtDmx(int universe, std::uint8_t sequence,
                                                            const Levels& levels);

/// A data packet of ANSI E1.31 at the usual priority.
enum class SacnEnd { GoesOn, Terminated };
inline constexpr std::size_t kSacnBytes = 126 + dmx::kUniverseChannels;
[[nodiscard]] std::array<std::uint8_t, kSacnBytes> SacnData(int universe, std::uint8_t sequence, SacnEnd end,
                                                            std::span<const std::uint8_t, 16> source,
                                                            const Levels& levels);
/// 239.255.high.low, the first byte in the lowest place.
[[nodiscard]] std::array<std::uint8_t, 4> SacnGroup(int universe);

}  // namespace platform::net
