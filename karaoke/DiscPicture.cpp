// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/DiscPicture.h"

#include <algorithm>
#include <cassert>

namespace karaoke {
namespace {

constexpr std::uint8_t kSixBits = 0x3F;
constexpr std::uint8_t kFourBits = 0x0F;
constexpr std::uint8_t kGraphics = 9;
constexpr std::size_t kDataAt = 4;  ///< command, instruction and two bytes of parity stand before it

enum DiscInstruction : std::uint8_t {
  kClearMemory = 1,
  kClearBorder = 2,
  kDrawTile = 6,
  kScrollFilling = 20,
  kScrollRound = 24,
  kSetTransparent = 28,
  kLoadLowColours = 30,
  kLoadHighColours = 31,
  kXorTile = 38,
};

/// The data of a packet, by number.
struct DiscData {
  std::span<const std::uint8_t> packet;
  [[nodiscard]] std::uint8_t Six(std::size_t number) const { return packet[kDataAt + number] & kSixBits; }
  [[nodiscard]] std::uint8_t Colour(std::size_t number) const { return packet[kDataAt + number] & kFourBits; }
};

std::size_t PlaceInMemory(int x, int y) {
  return static_cast<std::size_t>(y) * DiscPicture::kWidth + static_cast<std::size_t>(x);
}

bool IsSeen(const DiscPicture& picture, int left, int top) {
  const int x = left - DiscPicture::kTileWidth - picture.right;
  const int y = top - DiscPicture::kTileHeight - picture.down;
  return x > -DiscPicture::kTileWidth && x < DiscPicture::kSeenWidth && y > -DiscPicture::kTileHeight &&
         y < DiscPicture::kSeenHeight;
}

/// Whether anything that is seen has one of the colours, given as bits.
bool AnySeen(const DiscPicture& picture, unsigned colours) {
  for (int row = 0; row < DiscPicture::kSeenHeight; ++row) {
    unsigned found = 0;
    for (const std::uint8_t number : picture.SeenRow(row)) found |= 1U << number;
    if ((found & colours) != 0) return true;
  }
  return false;
}

/// Bits of the colours that look unlike this one.
unsigned ColoursUnlike(const DiscPicture& picture, std::uint8_t number) {
  unsigned unlike = 0;
  for (unsigned other = 0; other < DiscPicture::kColours; ++other) {
    if (picture.colours[other] != picture.colours[number]) unlike |= 1U << other;
  }
  return unlike;
}

DiscEffect ClearMemory(const DiscData& data, DiscPicture& picture) {
  const std::uint8_t colour = data.Colour(0);
  // It is sent many times, in case one is lost; only the first makes a difference.
  const bool seen =
      picture.Ground() != picture.colours[colour] || AnySeen(picture, ColoursUnlike(picture, colour));
  picture.memory.fill(colour);
  picture.ground = colour;
  picture.right = 0;
  picture.down = 0;
  return seen ? DiscEffect::Seen : DiscEffect::None;
}

DiscEffect ClearBorder(const DiscData& data, DiscPicture& picture) {
  const std::uint8_t colour = data.Colour(0);
  const auto rows = [&](int from, int until, int left, int right) {
    for (int y = from; y < until; ++y) {
      std::fill(picture.memory.begin() + static_cast<std::ptrdiff_t>(PlaceInMemory(left, y)),
                picture.memory.begin() + static_cast<std::ptrdiff_t>(PlaceInMemory(right, y)), colour);
    }
  };
  constexpr int kLeft = DiscPicture::kTileWidth, kRight = kLeft + DiscPicture::kSeenWidth;
  constexpr int kTop = DiscPicture::kTileHeight, kBottom = kTop + DiscPicture::kSeenHeight;
  rows(0, kTop, 0, DiscPicture::kWidth);
  rows(kBottom, DiscPicture::kHeight, 0, DiscPicture::kWidth);
  rows(kTop, kBottom, 0, kLeft);
  rows(kTop, kBottom, kRight, DiscPicture::kWidth);
  return picture.right != 0 || picture.down != 0 ? DiscEffect::Seen : DiscEffect::None;
}

DiscEffect DrawTile(const DiscData& data, bool exclusive, DiscPicture& picture) {
  constexpr int kRows = DiscPicture::kHeight / DiscPicture::kTileHeight;
  constexpr int kColumns = DiscPicture::kWidth / DiscPicture::kTileWidth;
  const int row = data.Six(2) & 0x1F, column = data.Six(3);
  if (row >= kRows || column >= kColumns) return DiscEffect::Unknown;
  const std::uint8_t inks[] = {data.Colour(0), data.Colour(1)};
  const int left = column * DiscPicture::kTileWidth, top = row * DiscPicture::kTileHeight;
  bool differs = false;
  for (int y = 0; y < DiscPicture::kTileHeight; ++y) {
    const std::uint8_t bits = data.Six(4 + static_cast<std::size_t>(y));
    for (int x = 0; x < DiscPicture::kTileWidth; ++x) {
      std::uint8_t& pixel = picture.memory[PlaceInMemory(left + x, top + y)];
      const std::uint8_t ink = inks[bits >> (DiscPicture::kTileWidth - 1 - x) & 1];
      const auto drawn = static_cast<std::uint8_t>(exclusive ? pixel ^ ink : ink);
      differs = differs || picture.colours[drawn] != picture.colours[pixel];
      pixel = drawn;
    }
  }
  return differs && IsSeen(picture, left, top) ? DiscEffect::Seen : DiscEffect::None;
}

/// Pixels to move by from the two bits of a direction: 1 is further right or down, 2 back.
int StepOf(std::uint8_t data, int tile) {
  const int direction = data >> 4 & 3;
  return direction == 1 ? tile : direction == 2 ? -tile : 0;
}

/// Moves the whole memory; what goes over an edge comes back at the other one.
void RollMemory(int across, int along, DiscPicture& picture) {
  auto& memory = picture.memory;
  const int rows = (DiscPicture::kHeight - along) % DiscPicture::kHeight;
  std::rotate(memory.begin(), memory.begin() + static_cast<std::ptrdiff_t>(PlaceInMemory(0, rows)),
              memory.end());
  if (across == 0) return;
  const int first = (DiscPicture::kWidth - across) % DiscPicture::kWidth;
  for (int y = 0; y < DiscPicture::kHeight; ++y) {
    const auto row = memory.begin() + static_cast<std::ptrdiff_t>(PlaceInMemory(0, y));
    std::rotate(row, row + first, row + DiscPicture::kWidth);
  }
}

/// What came in by a roll is one colour.
void FillRolledIn(int across, int along, std::uint8_t colour, DiscPicture& picture) {
  const int left = across < 0 ? DiscPicture::kWidth + across : 0;
  const int top = along < 0 ? DiscPicture::kHeight + along : 0;
  const auto fill = [&](int from_x, int from_y, int width, int height) {
    for (int y = from_y; y < from_y + height; ++y) {
      std::fill_n(picture.memory.begin() + static_cast<std::ptrdiff_t>(PlaceInMemory(from_x, y)), width,
                  colour);
    }
  };
  if (across != 0) fill(left, 0, DiscPicture::kTileWidth, DiscPicture::kHeight);
  if (along != 0) fill(0, top, DiscPicture::kWidth, DiscPicture::kTileHeight);
}

DiscEffect Scroll(const DiscData& data, bool filling, DiscPicture& picture) {
  const int across = StepOf(data.Six(1), DiscPicture::kTileWidth);
  const int along = StepOf(data.Six(2), DiscPicture::kTileHeight);
  const int right = std::min(data.Six(1) & 0x07, DiscPicture::kTileWidth - 1);
  const int down = std::min(data.Six(2) & 0x0F, DiscPicture::kTileHeight - 1);
  const bool seen = across != 0 || along != 0 || right != picture.right || down != picture.down;
  if (across != 0 || along != 0) RollMemory(across, along, picture);
  if (filling) FillRolledIn(across, along, data.Colour(0), picture);
  picture.right = right;
  picture.down = down;
  return seen ? DiscEffect::Seen : DiscEffect::None;
}

DiscEffect LoadColours(const DiscData& data, std::size_t first, DiscPicture& picture) {
  constexpr std::size_t kLoaded = 8;
  constexpr std::uint32_t kFull = 17;  ///< 15 becomes 255
  unsigned changed = 0;
  for (std::size_t i = 0; i < kLoaded; ++i) {
    const std::uint32_t high = data.Six(2 * i), low = data.Six(2 * i + 1);
    const std::uint32_t red = high >> 2, green = (high & 3) << 2 | low >> 4, blue = low & kFourBits;
    const std::uint32_t colour = (red << 16 | green << 8 | blue) * kFull;
    if (picture.colours[first + i] != colour) changed |= 1U << (first + i);
    picture.colours[first + i] = colour;
  }
  const bool seen = changed != 0 && ((changed >> picture.ground & 1) != 0 || AnySeen(picture, changed));
  return seen ? DiscEffect::Seen : DiscEffect::None;
}

}  // namespace

std::uint64_t HashOf(const DiscPicture& picture) {
  constexpr std::uint64_t kPrime = 1099511628211U;
  std::uint64_t hash = 14695981039346656037U;
  for (int row = 0; row < DiscPicture::kSeenHeight; ++row) {
    for (const std::uint8_t number : picture.SeenRow(row)) hash = (hash ^ picture.colours[number]) * kPrime;
  }
  return (hash ^ picture.Ground()) * kPrime;
}

bool IsDiscGraphics(std::span<const std::uint8_t> packet) {
  return (packet.front() & kSixBits) == kGraphics;
}

DiscEffect Apply(std::span<const std::uint8_t> packet, DiscPicture& picture) {
  assert(packet.size() == kDiscPacketBytes);
  if (!IsDiscGraphics(packet)) return DiscEffect::None;
  const DiscData data{packet};
  switch (packet[1] & kSixBits) {
    case kClearMemory:
      return ClearMemory(data, picture);
    case kClearBorder:
      return ClearBorder(data, picture);
    case kDrawTile:
      return DrawTile(data, false, picture);
    case kXorTile:
      return DrawTile(data, true, picture);
    case kScrollFilling:
      return Scroll(data, true, picture);
    case kScrollRound:
      return Scroll(data, false, picture);
    case kSetTransparent:
      picture.transparent = data.Colour(0);
      return DiscEffect::None;
    case kLoadLowColours:
      return LoadColours(data, 0, picture);
    case kLoadHighColours:
      return LoadColours(data, DiscPicture::kColours / 2, picture);
    default:
      return DiscEffect::Unknown;
  }
}

}  // namespace karaoke
