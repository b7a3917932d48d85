// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace dmx {

/// The colour pictures that a preset chooses from, 0xrrggbb by their index: white, red, orange, yellow,
/// green, blue, magenta, light blue, amber, cyan, pink, violet, ultraviolet, warm white.
inline constexpr std::array<std::uint32_t, 14> kPictureColours{
    0xffffff, 0xff2020, 0xff8000, 0xffe600, 0x20d030, 0x2040ff, 0xff20c8,
    0x70c0ff, 0xffa000, 0x00e0f0, 0xff70a8, 0x9030ff, 0x5a00d0, 0xffd9a0};

}  // namespace dmx
