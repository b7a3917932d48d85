// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/FlacStream.h"

#include <algorithm>

namespace platform::codec {
namespace {

struct FrameHead {
  std::int64_t number = 0;
  int frames = 0;  ///< of sound
};

std::uint8_t Crc8(std::span<const std::uint8_t> bytes) {
  unsigned crc = 0;
  for (const std::uint8_t byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 0x80) != 0 ? (crc << 1) ^ 0x07 : crc << 1;
  }
  return static_cast<std::uint8_t>(crc);
}

std::uint16_t Crc16(std::span<const std::uint8_t> bytes) {
  unsigned crc = 0;
  for (const std::uint8_t byte : bytes) {
    crc ^= static_cast<unsigned>(byte) << 8;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 0x8000) != 0 ? (crc << 1) ^ 0x8005 : crc << 1;
  }
  return static_cast<std::uint16_t>(crc);
}

/// The number of a frame, coded as UTF-8 codes characters, and the bytes it takes; 0 bytes when it is none.
std::size_t ReadNumber(std::span<const std::uint8_t> bytes, std::int64_t& number) {
  if (bytes.empty()) return 0;
  std::size_t size = 0;
  while (size < 7 && (bytes[0] & (0x80 >> size)) != 0) ++size;
  if (size == 1 || size > 6 || std::max<std::size_t>(size, 1) > bytes.size()) return 0;
  number = size == 0 ? bytes[0] : bytes[0] & (0x3F >> size);
  for (std::size_t i = 1; i < size; ++i) {
    if ((bytes[i] & 0xC0) != 0x80) return 0;
    number = number * 64 + (bytes[i] & 0x3F);
  }
  return std::max<std::size_t>(size, 1);
}

int BlockOf(int code, std::span<const std::uint8_t> extra) {
  if (code == 1) return 192;
  if (code <= 5) return 576 << (code - 2);
  if (code == 6) return extra[0] + 1;
  if (code == 7) return extra[0] * 256 + extra[1] + 1;
  return 256 << (code - 8);
}

std::optional<FrameHead> ReadHead(std::span<const std::uint8_t> bytes) {
  constexpr std::size_t kLongest = 16;
  bytes = bytes.first(std::min(bytes.size(), kLongest));
  if (bytes.size() < 6 || bytes[0] != 0xFF || bytes[1] != 0xF8 || (bytes[3] & 1) != 0) return {};
  const int block_code = bytes[2] >> 4;
  const int rate_code = bytes[2] & 15;
  if (block_code == 0 || rate_code == 15) return {};
  FrameHead head;
  const std::size_t digits = ReadNumber(bytes.subspan(4), head.number);
  const std::size_t block_bytes = block_code == 6 ? 1 : block_code == 7 ? 2 : 0;
  const std::size_t rate_bytes = rate_code == 12 ? 1 : rate_code >= 13 ? 2 : 0;
  const std::size_t size = 4 + digits + block_bytes + rate_bytes;
  if (digits == 0 || size >= bytes.size() || Crc8(bytes.first(size)) != bytes[size]) return {};
  head.frames = BlockOf(block_code, bytes.subspan(4 + digits));
  return head;
}

/// Whether the whole frame before this number ends at a place: sound may look like the head of a frame.
bool FollowsAFrame(std::span<const std::uint8_t> bytes, std::size_t place, std::int64_t number) {
  for (std::size_t before = place; before-- > 0;) {
    const auto head = ReadHead(bytes.subspan(before));
    if (!head || head->number != number - 1) continue;
    return Crc16(bytes.subspan(before, place - before)) == 0;
  }
  return false;
}

}  // namespace

std::array<std::uint8_t, 5> FlacLength(std::int64_t frames, int bits) {
  const auto length = static_cast<std::uint64_t>(frames) & 0xFFFFFFFFFULL;
  std::array<std::uint8_t, 5> told{};
  told[0] = static_cast<std::uint8_t>((((bits - 1) & 15) << 4) | static_cast<int>(length >> 32));
  for (std::size_t i = 1; i < told.size(); ++i) told[i] = static_cast<std::uint8_t>(length >> (8 * (4 - i)));
  return told;
}

std::optional<FlacEnd> FindFlacEnd(std::span<const std::uint8_t> bytes, int block) {
  for (std::size_t place = bytes.size(); place-- > 0;) {
    const auto head = ReadHead(bytes.subspan(place));
    if (!head) continue;
    const std::int64_t before = head->number * block;
    if (Crc16(bytes.subspan(place)) == 0) return FlacEnd{bytes.size(), before + head->frames};
    if (head->number == 0 || FollowsAFrame(bytes, place, head->number)) return FlacEnd{place, before};
  }
  return {};
}

}  // namespace platform::codec
