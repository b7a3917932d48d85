// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace karaoke {

/// The picture that the packets of a disc draw: colour numbers, and the colours that stand for them now.
///
/// The memory is larger than what is seen of it by a tile on every side, so that what scrolls in can be drawn
/// before. Threads: one; a value.
struct DiscPicture {
  static constexpr int kWidth = 300, kHeight = 216;
  static constexpr int kTileWidth = 6, kTileHeight = 12;
  static constexpr int kSeenWidth = kWidth - 2 * kTileWidth, kSeenHeight = kHeight - 2 * kTileHeight;
  static constexpr int kColours = 16;

  std::array<std::uint8_t, static_cast<std::size_t>(kWidth) * kHeight> memory{};
  std::array<std::uint32_t, kColours> colours{};  ///< 0x00RRGGBB; black until they are loaded
  int right = 0;                                  ///< pixels that what is seen lies further right, 0 to 5
  int down = 0;                                   ///< and further down, 0 to 11
  std::uint8_t ground = 0;                        ///< what the memory was last cleared to
  std::uint8_t transparent = 0;                   ///< where a film would show through; nothing lies behind

  bool operator==(const DiscPicture&) const = default;

  /// The colour that belongs around the picture.
  [[nodiscard]] std::uint32_t Ground() const { return colours[ground]; }
  /// Colour numbers of a row of what is seen, kSeenWidth of them.
  [[nodiscard]] std::span<const std::uint8_t> SeenRow(int row) const {
    const int start = (kTileHeight + down + row) * kWidth + kTileWidth + right;
    return std::span(memory).subspan(static_cast<std::size_t>(start), kSeenWidth);
  }
};

/// Of the colours that are seen, the same on every machine.
[[nodiscard]] std::uint64_t HashOf(const DiscPicture& picture);

inline constexpr std::size_t kDiscPacketBytes = 24;

/// What a packet did.
enum class DiscEffect {
  None,     ///< it is no graphics, or changes nothing that is seen
  Seen,     ///< the picture looks different
  Unknown,  ///< graphics that are not known, or draw outside the memory: left out
};

/// Carries out one packet. Of its bytes only the six bits count that belong to the graphics.
/// Requires: kDiscPacketBytes bytes.
DiscEffect Apply(std::span<const std::uint8_t> packet, DiscPicture& picture);

/// Whether a packet is graphics at all.
[[nodiscard]] bool IsDiscGraphics(std::span<const std::uint8_t> packet);

}  // namespace karaoke
